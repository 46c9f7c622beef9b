#include "journal_file.h"

#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "usage_error.h"
#include "value_json.h"

namespace kxjob::command {
namespace {

Json ShownArgument(const Value& argument) {
    const std::optional<AutomationError> error = HeldError(argument);
    return error ? Json{{"error", ToJson(*error)}} : ToJson(argument);
}

Json ShownInOrder(const std::vector<Value>& arguments) {
    Json list = Json::array();
    for (const Value& argument : arguments) list.push_back(ShownArgument(argument));
    return list;
}

Json ShownByName(const std::vector<std::pair<std::string, Value>>& arguments) {
    Json object = Json::object();
    for (const auto& [name, argument] : arguments) object[name] = ShownArgument(argument);
    return object;
}

Json EnterJson(const JournalEvent& event) {
    return {{"event", "enter"},
            {"method", event.method},
            {"line", event.line},
            {"arguments", ShownByName(event.named)}};
}

Json CallJson(const JournalEvent& event) {
    Json json{{"event", "call"},
              {"method", event.method},
              {"line", event.line},
              {"object", event.object},
              {"operation", event.operation},
              {"arguments", ShownInOrder(event.arguments)}};
    if (event.result) json["result"] = ToJson(*event.result);
    if (event.error) json["error"] = ToJson(*event.error);
    return json;
}

Json LeaveJson(const JournalEvent& event) {
    Json json{{"event", "leave"}, {"method", event.method}};
    if (event.result) json["result"] = ToJson(*event.result);
    json["arguments"] = ShownByName(event.named);
    return json;
}

Json RaiseJson(const JournalEvent& event) {
    Json json{{"event", "raise"}, {"method", event.method}};
    if (event.error) json["error"] = ToJson(*event.error);
    return json;
}

Json EventJson(const JournalEvent& event) {
    switch (event.kind) {
        case JournalEvent::Kind::Enter: return EnterJson(event);
        case JournalEvent::Kind::Call: return CallJson(event);
        case JournalEvent::Kind::Leave: return LeaveJson(event);
        case JournalEvent::Kind::Raise: return RaiseJson(event);
    }
    return nullptr;
}

}  // namespace

JournalFile::JournalFile(const std::string& path) : file_(path, std::ios::binary | std::ios::trunc) {
    if (!file_) {
        throw UsageError(
            "The file for --explain cannot be written: " + std::generic_category().message(errno) + ".");
    }
}

void JournalFile::Write(const JournalEvent& event) {
    file_ << OneLine(EventJson(event)) + '\n' << std::flush;
}

}  // namespace kxjob::command

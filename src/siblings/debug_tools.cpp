#include "siblings/debug_tools.h"

#include <array>
#include <utility>

#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {

DebugTools::DebugTools(std::shared_ptr<TraceLog> log) : log_(std::move(log)) {}

std::string DebugTools::Name() const {
    return "DebugTools_83.Helper";
}

std::span<const std::string_view> DebugTools::MemberNames() const {
    static constexpr std::array<std::string_view, 1> kNames = {"LogAndReRaiseVBError"};
    return kNames;
}

Value DebugTools::Call(std::string_view method, std::span<const Value> arguments) {
    if (method != "LogAndReRaiseVBError") RaiseUnknownMember(method);
    RequireArguments(method, arguments, 6);
    const ComponentRef& pending = arguments[0].Object();
    const AutomationError error(pending->Get("Number").ToInt32(), pending->Get("Source").ToText(),
                                pending->Get("Description").ToText(), arguments[2].ToInt32());
    std::int32_t level = 1;
    log_->Write("Error " + std::to_string(error.Number()) + " from " + error.Source() + " at line " +
                    std::to_string(error.Line()) + ": " + error.Description(),
                level, arguments[3].ToText(), arguments[4].ToText(), arguments[5].ToText());
    throw error;
}

}  // namespace kxjob

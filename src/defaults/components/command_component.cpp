#include "defaults/components/command_component.h"

#include <array>
#include <utility>

#include "automation/runtime_error.h"
#include "defaults/components/child_process.h"
#include "defaults/components/command_line.h"
#include "defaults/text/storable_text.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

/// What a program wrote, as a text that can become a note: storable, and without the line breaks at its end.
std::string NoteOf(const std::string& output) {
    std::string note = StorableCopy(output);
    note.erase(note.find_last_not_of("\r\n") + 1);
    return note;
}

std::vector<std::string> VariablesOf(std::span<const Value> arguments) {
    constexpr std::array<const char*, 6> kNames{"KXJOB_CONNECTION_STRING", "KXJOB_PROVIDER",
                                                "KXJOB_QUALIFIER",         "KXJOB_JOB",
                                                "KXJOB_JOB_ITEM",          "KXJOB_IDENTIFIER"};
    std::vector<std::string> variables;
    std::size_t place = 0;
    for (const char* name : kNames) {
        const std::string text = arguments[place++].ToText();
        RequireStorable(text);  // a NUL would end the variable early
        variables.push_back(std::string(name) + "=" + text);
    }
    return variables;
}

}  // namespace

CommandComponent::CommandComponent(std::string progId, std::vector<std::string> words)
    : progId_(std::move(progId)), words_(std::move(words)) {}

Value CommandComponent::Call(std::string_view method, std::span<const Value> arguments) {
    if (method != "RunJobItem") RaiseUnknownMember(method);
    RequireArguments(method, arguments, 7);
    const Value& data = arguments.back();
    const ProcessResult result =
        RunProcess(words_, VariablesOf(arguments), data.IsNull() ? "" : data.ToText());
    if (result.ending.empty()) return NoteOf(result.output);
    std::string complaint = NoteOf(result.errorOutput);
    if (complaint.empty()) complaint = words_.front() + " " + result.ending;
    throw AutomationError(error_number::kCommandFailed, progId_ + ".RunJobItem", complaint);
}

ComponentRef CreateCommandComponent(const std::string& progId, const std::string& commandLine) {
    std::vector<std::string> words = SplitCommandLine(commandLine);
    const std::string program = words.empty() ? std::string() : FindProgram(words.front());
    if (program.empty()) {
        RaiseRuntimeError(error_number::kClassNotRegistered,
                          progId + ": the program of its command is not there or not executable");
    }
    words.front() = program;
    return std::make_shared<CommandComponent>(progId, std::move(words));
}

}  // namespace kxjob

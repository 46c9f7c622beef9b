#include "call_command.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "command_groups.h"
#include "exit_status.h"
#include "journal_file.h"
#include "kxjob/automation_error.h"
#include "kxjob/call_journal.h"
#include "kxjob/job_helper.h"
#include "method_table.h"
#include "usage_error.h"
#include "value_json.h"

namespace kxjob::command {
namespace {

constexpr const char* kExplain = "explain";

struct CallRequest {
    GivenArguments given;
    std::optional<std::string> explainFile;
    bool isForHelp = false;
};

bool IsArgumentOf(const Method& method, const std::string& name) {
    return std::any_of(method.arguments.begin(), method.arguments.end(),
                       [&](const MethodArgument& argument) { return argument.name == name; });
}

/// Pairs names with values; whatever stands behind a name is its value.
CallRequest ReadRequest(const Method& method, const std::vector<std::string>& texts) {
    CallRequest request;
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        if (*text == "--help" || *text == "-h") return {.given = {}, .explainFile = {}, .isForHelp = true};
        if (!text->starts_with("--")) {
            throw UsageError("A value stands without a name: arguments of " + method.name +
                             " are given as --Name value.");
        }
        const std::size_t equals = text->find('=');
        const std::string name = text->substr(2, equals == std::string::npos ? equals : equals - 2);
        if (name != kExplain && !IsArgumentOf(method, name)) {
            throw UsageError("The method " + method.name + " has no argument --" + name + ".");
        }
        if (equals == std::string::npos && std::next(text) == texts.end()) {
            throw UsageError("The argument --" + name + " has no value.");
        }
        const std::string value = equals == std::string::npos ? *++text : text->substr(equals + 1);
        const bool isRepeated = name == kExplain ? std::exchange(request.explainFile, value).has_value()
                                                 : !request.given.emplace(name, value).second;
        if (isRepeated) throw UsageError("The argument --" + name + " is given twice.");
    }
    return request;
}

std::string HelpOf(const Method& method) {
    CLI::App shown("Calls JobHelper." + method.name + " and prints its answer as one line of JSON.",
                   "kxjob call " + method.name);
    for (const MethodArgument& argument : method.arguments) {
        shown.add_option("--" + argument.name)
            ->type_name(argument.kind)
            ->required(argument.isRequired)
            ->description(argument.isByReference ? "by reference: printed beside the result" : "");
    }
    shown.add_option(std::string("--") + kExplain)
        ->type_name("FILE")
        ->description("write what the call does, step by step, as JSON Lines");
    return shown.help();
}

struct Answer {
    Json json;
    int exitStatus;
};

Answer FailedAnswer(const AutomationError& error) {
    return {{{"error", ToJson(error)}}, kFailed};
}

Answer Run(const PreparedCall& call, JournalFile* journalFile) {
    try {
        std::optional<CallJournal> journal;
        if (journalFile != nullptr) journal.emplace(*journalFile);
        JobHelper helper;
        return {call(helper), kDone};
    } catch (const AutomationError& error) {
        return FailedAnswer(error);
    } catch (const std::exception& exception) {
        return FailedAnswer({error_number::kInternal, "Job_83", exception.what()});
    }
}

int Call(const std::string& methodName, const std::vector<std::string>& methodArguments) {
    const Method* const method = FindMethod(methodName);
    if (method == nullptr) throw UsageError("There is no method " + methodName + ".");
    const CallRequest request = ReadRequest(*method, methodArguments);
    if (request.isForHelp) {
        std::cout << HelpOf(*method);
        return kDone;
    }
    const PreparedCall call = method->prepare(request.given);
    std::optional<JournalFile> journalFile;
    if (request.explainFile) journalFile.emplace(*request.explainFile);

    const Answer answer = Run(call, journalFile ? &*journalFile : nullptr);
    std::cout << OneLine(answer.json) << '\n' << std::flush;
    if (journalFile && !journalFile->IsWhole()) {
        std::cerr << "The call has been made, but its journal could not be written whole.\n";
        return kFailed;
    }
    return answer.exitStatus;
}

std::string MethodList() {
    std::string list = "Methods (kxjob call METHOD --help lists the arguments of one):\n";
    for (const Method& method : Methods()) list += "  " + method.name + "\n";
    return list;
}

}  // namespace

std::vector<std::string> TakeMethodArguments(std::vector<std::string>& arguments) {
    constexpr std::ptrdiff_t kBefore = 2;  // call METHOD
    const bool isMethodCall =
        arguments.size() > kBefore && arguments[0] == "call" && !arguments[1].starts_with('-');
    if (!isMethodCall) return {};
    std::vector<std::string> taken(arguments.begin() + kBefore, arguments.end());
    arguments.erase(arguments.begin() + kBefore, arguments.end());
    return taken;
}

void AddCallCommand(CLI::App& app, std::vector<std::string> methodArguments, int& exitStatus) {
    CLI::App* const command = app.add_subcommand("call", "Call one method of JobHelper; the answer is JSON");
    command->group(kPrograms);
    const auto methodName = std::make_shared<std::string>();
    command
        ->add_option("METHOD", *methodName,
                     "The published name of the method, then its arguments as --Name value")
        ->required();
    command->footer(MethodList());
    command->callback([methodName, methodArguments = std::move(methodArguments), &exitStatus] {
        exitStatus = Call(*methodName, methodArguments);
    });
}

}  // namespace kxjob::command

// `kxjob call` with any arguments. First line: the method's name, or its number as one character; then one
// argument a line. It ends with one of the three statuses, and what it prints is one JSON object.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>

#include "call_command.h"
#include "exit_status.h"
#include "kxjob/automation_error.h"
#include "method_table.h"
#include "support/captured_output.h"
#include "support/fuzz_input.h"
#include "support/fuzz_store.h"
#include "usage_error.h"

namespace {

using kxjob::command::kDone;
using kxjob::command::kFailed;
using kxjob::command::kWrongUsage;
using kxjob::fuzz::FuzzStore;
using kxjob::fuzz::Require;

/// No input may write files of its choice, nor connect to where it likes: journals are left out, and a
/// connection string is the store's, or one of a few that lead nowhere.
std::vector<std::string> Tamed(std::vector<std::string> arguments) {
    static const std::vector<std::string> connections = {
        FuzzStore::Instance().ConnectionString(), "", "Driver",
        "Driver=SQLite;Database=/nonexistent/store.db", "Provider=Nothing;Password={T1ger"};
    const std::string name = "--ConnectionString";
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string& text = arguments[i];
        if (text.starts_with("--explain")) text = "--help";
        if (!text.starts_with(name)) continue;
        std::string& value = text == name && i + 1 < arguments.size() ? arguments[++i] : text;
        const std::size_t choice = value.empty() ? 0 : static_cast<unsigned char>(value.back());
        const std::string& connection = connections[choice % connections.size()];
        value = &value == &text ? name + "=" + connection : connection;
    }
    return arguments;
}

int RunCommand(std::vector<std::string> arguments) {
    CLI::App app("fuzzed", "kxjob");
    app.require_subcommand(1);
    int exitStatus = kDone;
    kxjob::command::AddCallCommand(app, kxjob::command::TakeMethodArguments(arguments), exitStatus);
    try {
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError&) {
        return kWrongUsage;
    } catch (const kxjob::command::UsageError&) {
        return kWrongUsage;
    }
    return exitStatus;
}

std::string MethodName(const std::string& line) {
    const auto methods = kxjob::command::Methods();
    return line.size() == 1 ? methods[static_cast<unsigned char>(line[0]) % methods.size()].name : line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzStore& store = FuzzStore::Instance();
    store.Clear();
    store.Insert("JobType", {{"jobtypeid", "T"}, {"implprogid", "kxTimer_83.Timer"}});
    store.Insert("job", {{"jobguid", "J"}, {"jobtypeid", "T"}, {"jobstateid", "RUNNING"}});
    std::vector<std::string> lines = kxjob::fuzz::Lines(data, size);
    lines[0] = MethodName(lines[0]);
    std::vector<std::string> arguments = Tamed(std::move(lines));
    arguments.insert(arguments.begin(), "call");
    const bool asksForHelp = std::any_of(arguments.begin(), arguments.end(), [](const std::string& text) {
        return text.starts_with("-h") || text.starts_with("--help");
    });

    std::string shown;
    int status = kDone;
    {
        const kxjob::fuzz::CapturedOutput output;
        status = RunCommand(arguments);
        shown = output.Shown();
    }

    Require(status == kDone || status == kFailed || status == kWrongUsage, "the status is one of the three");
    if (status == kWrongUsage) Require(shown.empty(), "wrong usage prints no answer");
    if (status == kWrongUsage || asksForHelp) return 0;
    Require(nlohmann::json::accept(shown), "the answer is JSON");
    const auto answer = nlohmann::json::parse(shown);
    Require(answer.is_object() && answer.contains("error") == (status == kFailed), "an error is told as one");
    return 0;
}

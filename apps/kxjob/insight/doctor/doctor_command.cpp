#include "insight/doctor/doctor_command.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <optional>

#include "command_groups.h"
#include "exit_status.h"
#include "insight/doctor/clock_check.h"
#include "insight/doctor/finding.h"
#include "insight/doctor/index_checks.h"
#include "insight/doctor/job_checks.h"
#include "insight/doctor/machine_checks.h"
#include "insight/doctor/table_checks.h"
#include "kxjob/automation_error.h"
#include "kxjob/store.h"
#include "store/store_options.h"
#include "terminal/colour.h"

namespace kxjob::command {
namespace {

struct DoctorOptions {
    StoreOptions store;
    bool json = false;
};

std::optional<StoreConnection> NamedStore(const StoreOptions& options, Findings& findings) {
    try {
        return options.Resolve();
    } catch (const AutomationError& error) {
        findings.push_back({finding::kNoStoreNamed, SentenceOf(error.Description())});
        return std::nullopt;
    }
}

bool CheckConnection(Store& store, Findings& findings) {
    const auto start = std::chrono::steady_clock::now();
    try {
        const std::string engine = store.EngineName();
        const auto taken =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
        findings.push_back(
            {finding::kConnected, fmt::format("The store could be connected to in {} ms.", taken.count())});
        findings.push_back(
            {finding::kEngine, fmt::format("The store is {} {}.", engine, store.EngineVersion())});
        return true;
    } catch (const AutomationError& error) {
        findings.push_back({finding::kNotConnected, SentenceOf(error.Description())});
        return false;
    }
}

/// A table that is missing fails what comes after it: it is told once.
bool HasProblem(const Findings& findings) {
    return std::ranges::any_of(
        findings, [](const Finding& finding) { return finding.kind.severity == Severity::Problem; });
}

void ExamineStore(const StoreConnection& connection, Findings& findings) {
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    if (!CheckConnection(store, findings)) return;
    try {
        CheckClock(store, findings);
        CheckTables(store, findings);
        if (HasProblem(findings)) return;
        CheckIndexes(store, connection.nameQualifier, findings);
        CheckJobTypes(connection, findings);
    } catch (const AutomationError& error) {
        findings.push_back({finding::kExaminationFailed,
                            SentenceOf("The examination had to be given up: " + error.Description())});
    }
}

Findings Examine(const StoreOptions& options) {
    Findings findings;
    CheckDriverThreads(findings);
    if (!CheckConfigurationFile(findings)) return findings;
    const std::optional<StoreConnection> store = NamedStore(options, findings);
    if (store) ExamineStore(*store, findings);
    return findings;
}

std::string Painted(const Palette& palette, Severity severity) {
    std::string padded = fmt::format("{:<8}", NameOf(severity));
    switch (severity) {
        case Severity::Ok: return palette.Paint(padded, Tone::kGood);
        case Severity::Warning: return palette.Paint(padded, Tone::kWaiting);
        case Severity::Problem: return palette.Paint(padded, Tone::kBad);
    }
    return padded;
}

int RunDoctor(const DoctorOptions& options) {
    const Findings findings = Examine(options.store);
    if (options.json) {
        Json list = Json::array();
        for (const Finding& finding : findings) list.push_back(ToJson(finding));
        std::cout << OneLine(list) << '\n';
    } else {
        const Palette palette = Palette::OfStandardOutput();
        for (const Finding& finding : findings)
            std::cout << Painted(palette, finding.kind.severity) << ' ' << finding.sentence << '\n';
    }
    return HasProblem(findings) ? kFailed : kDone;
}

}  // namespace

void AddDoctorCommand(CLI::App& app, int& exitStatus) {
    CLI::App* const command =
        app.add_subcommand("doctor", "Tell whether the store and this machine are in order");
    command->group(kUpkeep);
    const auto options = std::make_shared<DoctorOptions>();
    options->store.AddTo(*command);
    command->add_flag("--json", options->json, "Print one JSON list of findings");
    command->callback([options, &exitStatus] { exitStatus = RunDoctor(*options); });
}

}  // namespace kxjob::command

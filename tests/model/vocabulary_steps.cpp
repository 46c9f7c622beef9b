#include <algorithm>
#include <array>
#include <string_view>

#include "kxjob/collection.h"
#include "model/steps.h"

namespace kxjob::model {
namespace {

constexpr std::array<std::string_view, 6> kKnownStates = {"CREATING", "READY",    "QUEUED",
                                                          "RUNNING",  "COMPLETE", "CANCELLED"};

OneOf StateIsOneOf(const std::string& state, std::string_view first, std::string_view second,
                   std::uint32_t unknown) {
    CheckKey(state);
    if (std::find(kKnownStates.begin(), kKnownStates.end(), state) == kKnownStates.end()) RaiseOwn(unknown);
    return {Value(state == first || state == second)};
}

Step IsJobComplete(Draw& draw, const Tables& /*tables*/) {
    const std::string state = draw.State();
    return {.name = "IsJobComplete",
            .call = [=](JobHelper& jobs, Store&) -> Value { return jobs.IsJobComplete(state); },
            .effect = [=](Tables&) -> Result { return StateIsOneOf(state, "COMPLETE", "CANCELLED", 743); }};
}

Step IsJobRunning(Draw& draw, const Tables& /*tables*/) {
    const std::string state = draw.State();
    return {.name = "IsJobRunning",
            .call = [=](JobHelper& jobs, Store&) -> Value { return jobs.IsJobRunning(state); },
            .effect = [=](Tables&) -> Result { return StateIsOneOf(state, "QUEUED", "RUNNING", 744); }};
}

Step Constant(const char* name, std::string (JobHelper::*method)(), const char* text) {
    return {.name = name,
            .call = [=](JobHelper& jobs, Store&) -> Value { return (jobs.*method)(); },
            .effect = [=](Tables&) -> Result { return OneOf{text}; }};
}

/// The names of the tables that a script creates, in its order.
std::string CreatedTables(const std::string& script) {
    std::string names;
    std::size_t place = 0;
    while ((place = script.find("CREATE TABLE ", place)) != std::string::npos) {
        const std::size_t end = script.find(" (", place);
        const std::size_t begin = script.rfind(' ', end - 1) + 1;
        names += script.substr(begin, end - begin) + " ";
        place = end;
    }
    return names;
}

Step JobTableCreationScript(Draw& draw, const Tables& /*tables*/) {
    const Address at = draw.Place();
    const DataStoreProvider provider = at.provider;
    return {.name = "JobTableCreationScript",
            .call = [=](JobHelper& jobs, Store&) -> Value {
                Collection options;
                return CreatedTables(jobs.JobTableCreationScript(options, provider, at.qualifier));
            },
            .effect = [=](Tables&) -> Result {
                CheckQualifier(at.qualifier);
                if (provider < dspSqlServer || provider > dspSqlite) RaiseOwn(705);
                std::string names;
                for (const char* table : {"job ", "JobItem ", "jobtask ", "JobType "}) {
                    names += at.qualifier + table;
                }
                return OneOf{names};
            }};
}

}  // namespace

std::vector<StepKind> VocabularySteps() {
    return {
        {"Version", 1,
         [](Draw&, const Tables&) { return Constant("Version", &JobHelper::Version, "8.3.1202.0"); }},
        {"ParametersTagName", 1,
         [](Draw&, const Tables&) {
             return Constant("ParametersTagName", &JobHelper::ParametersTagName, "parameters");
         }},
        {"ParameterTagName", 1,
         [](Draw&, const Tables&) {
             return Constant("ParameterTagName", &JobHelper::ParameterTagName, "parameter");
         }},
        {"IsJobComplete", 1, IsJobComplete},
        {"IsJobRunning", 1, IsJobRunning},
        {"JobTableCreationScript", 1, JobTableCreationScript},
    };
}

}  // namespace kxjob::model

#include "faults/fault_case.h"

#include <algorithm>

#include "kxjob/array.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

constexpr int kMoreThanAGroup = 102;

FaultCase OtherRoad(const std::string& name, const std::string& before, const std::string& method) {
    const std::vector<MethodCall>& methods = EveryMethod();
    const auto found = std::find_if(methods.begin(), methods.end(),
                                    [&](const MethodCall& candidate) { return candidate.name == method; });
    return {.name = name,
            .className = "JobHelper",
            .before = before,
            .writes = PublishedWrites(method),
            .call = found->call};
}

FaultCase ItemsOfTwoGroups() {
    std::vector<Value> identifiers;
    for (int i = 0; i < kMoreThanAGroup; ++i) identifiers.emplace_back(std::to_string(i));
    return {.name = "CreateSimpleJobItems, two groups",
            .className = "JobHelper",
            .writes = WritesOfSimpleItems(kMoreThanAGroup),
            .isLong = true,
            .call = [identifiers](JobHelper& helper, const std::string& connectionString,
                                  DataStoreProvider provider, const std::string& qualifier) {
                helper.CreateSimpleJobItems(connectionString, provider, qualifier, kJobGuid,
                                            Array::List(identifiers));
            }};
}

FaultCase OfTimer(const TimerCall& member) {
    return {.name = "DurationTimer " + member.name,
            .className = "DurationTimer",
            .call = [call = member.call](JobHelper&, const std::string&, DataStoreProvider,
                                         const std::string&) { call(); }};
}

}  // namespace

std::vector<FaultCase> EveryFaultCase() {
    std::vector<FaultCase> cases;
    for (const MethodCall& method : EveryMethod()) {
        FaultCase given{.name = method.name,
                        .className = "JobHelper",
                        .writes = PublishedWrites(method.name),
                        .call = method.call};
        cases.push_back(given);
        if (!method.hasConfigurationFallback) continue;
        given.name += ", configured";
        given.fromConfiguration = true;
        cases.push_back(given);
    }
    cases.push_back(OtherRoad("GetNextJob, queued", "UPDATE kx_job SET jobstateid = 'QUEUED'", "GetNextJob"));
    cases.push_back(
        OtherRoad("GetNextJob, no task", "UPDATE kx_jobtask SET jobtaskstateid = 'FAILED'", "GetNextJob"));
    cases.push_back(ItemsOfTwoGroups());
    for (const TimerCall& member : EveryTimerMember()) cases.push_back(OfTimer(member));
    return cases;
}

}  // namespace kxjob::testing_support

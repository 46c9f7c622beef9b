#include "calls/container.h"

#include <map>

#include "kxjob/component_registry.h"
#include "support/every_method.h"

namespace kxjob::bench {
namespace {

using namespace testing_support;

constexpr int kItems = 10;
constexpr int kOtherJobs = 20;

class NoWorker : public Component {
public:
    std::string Name() const override { return kContainerComponent; }
};

std::string Numbered(const char* beginning, int number) {
    std::string digits = std::to_string(number);
    digits.insert(0, 4 - digits.size(), '0');
    return beginning + digits + "}";
}

std::string JobRow(const std::string& guid, const std::string& type, const std::string& state) {
    return "('" + guid + "', '" + type + "', 'a job', '<parameters/>', '" + state + "', 'RUNNING', " +
           std::to_string(kItems) + ", '" + kLockGuid + "')";
}

std::string Jobs() {
    std::string sql =
        "INSERT INTO %q%job (jobguid, jobtypeid, description, parameters, appstateguid, jobstateid,"
        " totalitemcount, jobeditorlockguid) VALUES " +
        JobRow(kJobGuid, kJobType, kStateGuid);
    for (int i = 0; i < kOtherJobs; ++i) {
        sql += ", " + JobRow(Numbered("{00000000-0000-4000-8000-00000001", i), "OTHER", kDevelopmentGuid);
    }
    return sql;
}

std::string Items() {
    std::string sql =
        "INSERT INTO %q%JobItem (jobitemguid, jobguid, identifier, sequence, jobitemstateid,"
        " jobtaskguid) VALUES ";
    for (int i = 0; i < kItems; ++i) {
        const std::string guid = i == 0 ? kItemGuid : Numbered("{00000000-0000-4000-8000-00000002", i);
        sql += std::string(i == 0 ? "" : ", ") + "('" + guid + "', '" + kJobGuid + "', '" + kIdentifierGuid +
               "', " + std::to_string(i) + ", 'COMPLETE', '" + kTaskGuid + "')";
    }
    return sql;
}

std::string Task() {
    return std::string("INSERT INTO %q%jobtask (jobtaskguid, jobguid, machine, jobtaskstateid) VALUES ('") +
           kTaskGuid + "', '" + kJobGuid + "', 'a machine', 'RUNNING')";
}

std::vector<std::string> Refill() {
    return {
        "DELETE FROM %q%JobItem", "DELETE FROM %q%jobtask", "DELETE FROM %q%job", Jobs(), Items(), Task()};
}

}  // namespace

std::vector<std::string> FillContainer() {
    std::vector<std::string> statements = Refill();
    statements.push_back(std::string("INSERT INTO %q%JobType VALUES ('") + kJobType + "', 'Nightly', '" +
                         kContainerComponent + "', ''), ('OTHER', 'Other', '" + kContainerComponent +
                         "', '')");
    statements.push_back(std::string("INSERT INTO %q%applicationstate VALUES ('PRODUCTION', '") +
                         kProductionGuid + "'), ('DEVELOPMENT', '" + kDevelopmentGuid + "')");
    return statements;
}

std::vector<std::string> ResetAfter(const std::string& method) {
    static const std::map<std::string, std::vector<std::string>> resets = {
        {"CreateJob", Refill()},
        {"CreateJobItem", {"DELETE FROM %q%JobItem WHERE sequence = 4 AND jobitemstateid IS NULL"}},
        {"CreateSimpleJobItems", {"DELETE FROM %q%JobItem WHERE jobitemstateid IS NULL"}},
        {"RemoveJobAndItems", Refill()},
        {"RemoveIrrelevantJobsInAllContainers", Refill()},
        {"RemoveIrrelevantJobsInContainer", Refill()},
        {"GetNewLockExcludingInterlopers",
         {std::string("UPDATE %q%job SET jobeditorlockguid = '") + kLockGuid + "'"}},
        {"AppendJobFailureNote", {"UPDATE %q%job SET failurenote = NULL WHERE failurenote IS NOT NULL"}},
        {"AppendJobItemFailureNote",
         {"UPDATE %q%JobItem SET failurenote = NULL WHERE failurenote IS NOT NULL"}},
    };
    const auto found = resets.find(method);
    return found == resets.end() ? std::vector<std::string>() : found->second;
}

void RegisterContainerComponent() {
    RegisterComponent(kContainerComponent, [] { return std::make_shared<NoWorker>(); });
}

}  // namespace kxjob::bench

#include "records/job_type_record.h"

#include <algorithm>
#include <exception>

#include "kxjob/component_registry.h"
#include "kxjob/job_helper.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

JobTypeRecord JobTypeOf(const Row& row) {
    return {.type = row.Text(jtifJobType),
            .description = row.Text(jtifDescription),
            .component = row.Text(jtifComponentInstantiationString),
            .notificationComponent = row.Text(jtifNotificationComponentInstantiationString)};
}

}  // namespace

std::vector<JobTypeRecord> ReadJobTypes(const StoreConnection& store, const std::string& type) {
    std::vector<JobTypeRecord> types = ReadRows(
        JobHelper().GetJobType(store.connectionString, store.provider, store.nameQualifier, type), JobTypeOf);
    std::ranges::sort(types, {}, &JobTypeRecord::type);
    return types;
}

bool CanCreateHere(const std::string& progId) {
    try {
        return CreateComponent(progId) != nullptr;
    } catch (const std::exception&) {
        return false;
    }
}

Json ToJson(const JobTypeRecord& type) {
    return {{"type", type.type},
            {"description", type.description},
            {"component", type.component},
            {"notificationComponent", type.notificationComponent}};
}

}  // namespace kxjob::command

#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/collection.h"
#include "kxjob/enums.h"
#include "kxjob/job_helper.h"
#include "store/row_indexes.h"
#include "store/sql_text.h"
#include "store/table_names.h"
#include "vocabulary/states.h"

namespace kxjob {
namespace {

/// The prefix keeps a job type that looks like a number a text key.
std::string MapKey(const std::string& jobTypeId) {
    return "Key" + jobTypeId;
}

}  // namespace

void JobHelper::GetQueuedAndRunningJobs(std::string ConnectionString, DataStoreProvider Provider,
                                        std::string NameQualifier, std::shared_ptr<Collection>& QueuedJobs,
                                        std::shared_ptr<Collection>& RunningJobs) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                ByReference("QueuedJobs", QueuedJobs),
                                ByReference("RunningJobs", RunningJobs)};
    return InFrame("GetQueuedAndRunningJobs", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        SqlText sql;
        sql << "SELECT jobguid, jobtypeid, jobstateid FROM " << tables.job();
        sql << " WHERE jobstateid IN (" << frame.FormatGuid(job_state::kRunning);
        sql << "," << frame.FormatGuid(job_state::kQueued)
            << ")";  // no blank behind the comma: published text
        QueuedJobs = std::make_shared<Collection>();
        RunningJobs = std::make_shared<Collection>();
        const Value rows = frame.Query(ConnectionString, Provider, sql, true);
        if (rows.IsEmpty()) return;

        const std::shared_ptr<KeyedCollection> progIds =
            frame.Use(*this).GetJobTypeProgIDs(ConnectionString, Provider, NameQualifier);
        for (const std::int32_t row : RowIndexes(frame, rows)) {
            const std::string jobTypeId = frame.Use(rows).Rows().Cell(1, row).ToText();
            if (!frame.UseObject(progIds).Exists(MapKey(jobTypeId))) {
                frame.Raise(855, "Unable to find meta data about job type '" + jobTypeId + "'");
            }
            const std::string progId = frame.UseObject(progIds).Item(MapKey(jobTypeId)).ToText();
            if (!frame.CanCreate(progId)) {
                frame.Trace(kProgress,
                            "Unable to create implementation (" + progId + ") for '" + jobTypeId + "'");
                continue;
            }
            const std::string jobGuid = frame.Use(rows).Rows().Cell(0, row).ToText();
            const std::string state = frame.Use(rows).Rows().Cell(2, row).ToText();
            if (state == job_state::kQueued) {
                frame.UseObject(QueuedJobs).Add(jobGuid, jobGuid);
            } else if (state == job_state::kRunning) {
                frame.UseObject(RunningJobs).Add(jobGuid, jobGuid);
            } else {
                frame.Trace(kWarning, "Found job " + jobGuid + " at unexpected state '" + state + "'");
            }
        }
    });
}

std::shared_ptr<KeyedCollection> JobHelper::GetJobTypeProgIDs(std::string ConnectionString,
                                                              DataStoreProvider Provider,
                                                              std::string NameQualifier) {
    const ArgumentList given = {
        {"ConnectionString", ConnectionString}, {"Provider", Provider}, {"NameQualifier", NameQualifier}};
    return InFrame("GetJobTypeProgIDs", given, [&](Frame& frame) {
        const Value jobTypes = frame.Use(*this).GetJobType(ConnectionString, Provider, NameQualifier, {});
        std::shared_ptr<KeyedCollection> progIds = frame.NewKeyedCollection();
        for (const std::int32_t row : RowIndexes(frame, jobTypes)) {
            const RowArray& rows = frame.Use(jobTypes).Rows();
            frame.UseObject(progIds).Add(rows.Cell(jtifComponentInstantiationString, row),
                                         MapKey(rows.Cell(jtifJobType, row).ToText()));
        }
        return progIds;
    });
}

}  // namespace kxjob

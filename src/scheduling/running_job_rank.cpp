#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/collection.h"
#include "kxjob/job_helper.h"
#include "store/row_indexes.h"
#include "store/sql_text.h"
#include "store/table_names.h"
#include "vocabulary/states.h"

namespace kxjob {
namespace {

/// Jobs with more RUNNING tasks than this are not recommended.
constexpr std::int32_t kTaskCeiling = 256;

}  // namespace

void JobHelper::GetHighestRankingRunningJobs(std::string ConnectionString, DataStoreProvider Provider,
                                             std::string NameQualifier,
                                             std::shared_ptr<Collection>& RunningJobs,
                                             std::shared_ptr<Collection>& Candidates, double& Rank) {
    const ArgumentList given = {
        {"ConnectionString", ConnectionString}, {"Provider", Provider},
        {"NameQualifier", NameQualifier},       ByReference("RunningJobs", RunningJobs),
        ByReference("Candidates", Candidates),  ByReference("Rank", Rank)};
    return InFrame("GetHighestRankingRunningJobs", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        SqlText guids;
        for (const Collection::Entry& job : frame.UseObject(RunningJobs)) {
            if (!guids.Empty()) guids << ", ";
            guids << frame.FormatGuid(job.item.ToText());
        }
        SqlText sql;
        sql << "SELECT jobguid, COUNT(*) FROM " << tables.jobtask();
        sql << " WHERE jobtaskstateid = " << frame.FormatGuid(job_task_state::kRunning);
        sql << " AND jobguid IN (" << guids.Text() << ") GROUP BY jobguid";
        const Value counts = frame.Query(ConnectionString, Provider, sql, true);
        if (counts.IsEmpty()) {
            Candidates = RunningJobs;
            Rank = 1.0;
            return;
        }

        std::int32_t lowest = kTaskCeiling;
        for (const std::int32_t row : RowIndexes(frame, counts)) {
            const std::string jobGuid = frame.Use(counts).Rows().Cell(0, row).ToText();
            const Value& runningTasks = frame.Use(counts).Rows().Cell(1, row);
            if (runningTasks.ToDouble() < lowest) {
                lowest = runningTasks.ToInt32();
                Candidates = std::make_shared<Collection>();
                Candidates->Add(jobGuid);
            } else if (runningTasks.ToDouble() == lowest) {
                frame.UseObject(Candidates).Add(jobGuid);  // a first job exactly at the ceiling finds none
            }
            frame.UseObject(RunningJobs).Remove(jobGuid);
        }
        if (RunningJobs->Count() > 0) {
            Candidates = RunningJobs;
            Rank = 1.0;
        } else {
            Rank = 1.0 / (lowest + 1);
        }
    });
}

}  // namespace kxjob

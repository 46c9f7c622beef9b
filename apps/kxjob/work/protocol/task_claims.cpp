#include "work/protocol/task_claims.h"

#include <fmt/format.h>
#include <pwd.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "kxjob/caller_texts.h"
#include "records/iso_time.h"

namespace kxjob::command {
namespace {

std::string MachineName() {
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

std::string UserName() {
    constexpr std::size_t kRoomForOneEntry = 16'384;
    std::vector<char> buffer(kRoomForOneEntry);
    passwd entry{};
    passwd* found = nullptr;
    const int problem = getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return problem == 0 && found != nullptr ? std::string(found->pw_name) : std::to_string(geteuid());
}

/// The statements that give back what a task holds, once its row says that it is not RUNNING. The first one
/// locks the job's row whatever it changes: a claim of the same task either comes whole before it or finds
/// the task ended.
std::vector<std::string> GivingBack(JobStore& store, const TaskName& name,
                                    const std::optional<SequenceRange>& where) {
    const std::string job = store.Literal(name.job);
    const std::string task = store.Literal(name.task);
    std::string held =
        fmt::format("jobguid = {} AND jobtaskguid = {} AND jobitemstateid = 'RUNNING'", job, task);
    if (where) held += fmt::format(" AND sequence BETWEEN {} AND {}", where->first, where->last);
    const std::string lowest =
        fmt::format("(SELECT MIN(sequence) FROM {} WHERE {})", store.Table("JobItem"), held);
    return {fmt::format("UPDATE {0} SET nextjobitem = CASE WHEN nextjobitem > {1} THEN {1} ELSE nextjobitem"
                        " END WHERE jobguid = {2}",
                        store.Table("job"), lowest, job),
            fmt::format("UPDATE {} SET jobitemstateid = NULL, jobtaskguid = NULL, startdt = NULL WHERE {}"
                        " AND EXISTS (SELECT 1 FROM {} WHERE jobtaskguid = {}"
                        " AND jobtaskstateid IN ('COMPLETE', 'FAILED'))",
                        store.Table("JobItem"), held, store.Table("jobtask"), task)};
}

void EndAndGiveBack(JobStore& store, const TaskName& name, const std::string& ending,
                    const std::optional<SequenceRange>& where) {
    std::vector<std::string> statements = GivingBack(store, name, where);
    statements.insert(statements.begin(), ending);
    store.ExecuteTogether(statements);
}

}  // namespace

std::string RegisterTask(JobStore& store, const std::string& job, const std::string& description,
                         double leaseSeconds) {
    const std::string machine = MachineName();
    const auto process = static_cast<std::int32_t>(getpid());
    const auto thread = static_cast<std::int32_t>(gettid());
    store.Execute(
        fmt::format("UPDATE {} SET jobtaskstateid = 'FAILED' WHERE jobguid = {} AND machine = {}"
                    " AND processid = {} AND threadid = {} AND jobtaskstateid = 'RUNNING'"
                    " AND enddt IS NULL",
                    store.Table("jobtask"), store.Literal(job), store.Literal(machine), process, thread));
    const StoreConnection& connection = store.Connection();
    std::string task = store.Jobs().RegisterJobTask(connection.connectionString, connection.nameQualifier,
                                                    description, job, UserName(), machine, process, thread);
    RenewClaims(store, {task}, leaseSeconds);
    return task;
}

void RenewClaims(JobStore& store, const std::vector<std::string>& tasks, double leaseSeconds) {
    if (tasks.empty()) return;
    store.Execute(fmt::format(
        "UPDATE {} SET enddt = {} WHERE jobtaskguid IN ({}) AND jobtaskstateid = 'RUNNING'",
        store.Table("jobtask"), store.Literal(LaterBy(store.Now(), leaseSeconds)), store.Literals(tasks)));
}

std::vector<TaskStanding> StandingsOf(JobStore& store, const std::vector<std::string>& tasks) {
    std::vector<TaskStanding> standings;
    if (tasks.empty()) return standings;
    standings.reserve(tasks.size());
    for (const std::string& task : tasks) standings.push_back({task, false, ""});
    const Value rows = store.Query(
        fmt::format("SELECT jobtaskguid, jobtaskstateid, command FROM {} WHERE jobtaskguid IN ({})",
                    store.Table("jobtask"), store.Literals(tasks)));
    for (std::int32_t row = 0; row < RowCount(rows); ++row) {
        const std::string task = rows.Rows().Cell(0, row).ToText();
        const auto standing = std::find_if(standings.begin(), standings.end(),
                                           [&](const TaskStanding& one) { return one.task == task; });
        if (standing == standings.end()) continue;
        standing->isRunning = rows.Rows().Cell(1, row).ToJoinedText() == kRunning;
        standing->command = rows.Rows().Cell(2, row).ToJoinedText();
    }
    return standings;
}

void CloseTask(JobStore& store, const TaskName& name, bool succeeded,
               const std::optional<SequenceRange>& where) {
    EndAndGiveBack(store, name,
                   fmt::format("UPDATE {} SET jobtaskstateid = {}, enddt = {} WHERE jobtaskguid = {}"
                               " AND jobtaskstateid = 'RUNNING'",
                               store.Table("jobtask"), store.Literal(succeeded ? kComplete : kFailedState),
                               store.Literal(NowISODateTime()), store.Literal(name.task)),
                   where);
}

std::vector<ExpiredTask> ExpiredTasks(JobStore& store) {
    const Value rows =
        store.Query(fmt::format("SELECT jobguid, jobtaskguid, enddt FROM {} WHERE jobtaskstateid = 'RUNNING'"
                                " AND enddt IS NOT NULL AND enddt < {}",
                                store.Table("jobtask"), store.Literal(store.Now())));
    std::vector<ExpiredTask> expired;
    expired.reserve(static_cast<std::size_t>(RowCount(rows)));
    for (std::int32_t row = 0; row < RowCount(rows); ++row) {
        expired.push_back({{rows.Rows().Cell(0, row).ToJoinedText(), rows.Rows().Cell(1, row).ToText()},
                           rows.Rows().Cell(2, row).ToText()});
    }
    return expired;
}

void TakeOver(JobStore& store, const ExpiredTask& task) {
    EndAndGiveBack(
        store, task.name,
        fmt::format("UPDATE {} SET jobtaskstateid = 'FAILED' WHERE jobtaskguid = {}"
                    " AND jobtaskstateid = 'RUNNING' AND enddt = {}",
                    store.Table("jobtask"), store.Literal(task.name.task), store.Literal(task.heldUntil)),
        std::nullopt);
}

bool IsTakenOver(JobStore& store, const std::string& task) {
    return store
               .Cell(fmt::format("SELECT jobtaskstateid FROM {} WHERE jobtaskguid = {}",
                                 store.Table("jobtask"), store.Literal(task)))
               .ToJoinedText() == kFailedState;
}

}  // namespace kxjob::command

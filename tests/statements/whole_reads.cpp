#include "statements/whole_reads.h"

#include <array>
#include <string_view>

namespace kxjob::testing_support {
namespace {

constexpr const char* kAnyEngine = "";
constexpr const char* kEveryJob = "every job is asked for";
constexpr const char* kOtherStates = "all jobs but those of these states are asked for";
constexpr const char* kOrphans = "what has no job can be anywhere";
constexpr const char* kNoJob = "without a job every row is an orphan";
constexpr const char* kTasksAtWork = "no index begins with the task's state";

struct WholeRead {
    std::string_view engine;  // empty: any
    const char* reason;
    const char* shape;
};

/// GetJob by the application state alone, for which the others find an index to go through.
constexpr const char* kJobsOfState =
    "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem, totalitemcount,"
    " succeededitemcount, faileditemcount, startdt, lastcompletiondt, sumoftimeincsq, appstateguid,"
    " failurenote  FROM kx_job WHERE  appstateguid = :ApplicationStateGUID";
constexpr const char* kRemovalOfOrphans = "DELETE FROM kx_JobItem WHERE jobguid NOT IN(:JobGUID, ...)";
constexpr const char* kCountOfTasks =
    "SELECT jobguid, COUNT(*) FROM kx_jobtask WHERE jobtaskstateid = 'RUNNING' GROUP BY jobguid";

constexpr std::array kWholeReads = {
    WholeRead{kAnyEngine, "every subsystem is asked for",
              "SELECT subsystemid FROM kx_subsystem ORDER BY subsystemid"},
    WholeRead{kAnyEngine, kOtherStates,
              "SELECT jobguid, jobtypeid FROM kx_job WHERE  appstateguid <> :ProductionStateGUID AND "
              " appstateguid <> :DevelopmentStateGUID"},
    WholeRead{kAnyEngine, kOtherStates,
              "SELECT jobguid, jobtypeid FROM kx_job WHERE  appstateguid <> :DevelopmentStateGUID"},
    WholeRead{kAnyEngine, kEveryJob, "SELECT jobguid FROM kx_job"},
    WholeRead{"SQLite", kOrphans, kRemovalOfOrphans},
    WholeRead{"PostgreSQL", kOrphans, kRemovalOfOrphans},
    WholeRead{kAnyEngine, kOrphans, "DELETE FROM kx_jobtask WHERE jobguid NOT IN(:JobGUID, ...)"},
    WholeRead{kAnyEngine, kNoJob, "DELETE FROM kx_JobItem"},
    WholeRead{kAnyEngine, kNoJob, "DELETE FROM kx_jobtask"},
    WholeRead{kAnyEngine, kEveryJob,
              "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem, totalitemcount,"
              " succeededitemcount, faileditemcount, startdt, lastcompletiondt, sumoftimeincsq, appstateguid,"
              " failurenote  FROM kx_job"},
    WholeRead{kAnyEngine, kEveryJob,
              "SELECT jobguid, description, jobtypeid, jobstateid, nextjobitem, totalitemcount,"
              " succeededitemcount, faileditemcount, startdt, lastcompletiondt, sumoftimeincsq, failurenote,"
              " appstateguid FROM kx_job"},
    WholeRead{kAnyEngine, "every type is asked for",
              "SELECT jobtypeid, description, implprogid, notificationprogid  FROM kx_JobType"},
    WholeRead{kAnyEngine, "every task is asked for",
              "SELECT jobtaskguid, description, jobguid, machine, processid, threadid, lastjobitem, command,"
              " usercontext, jobtaskstateid, startdt, enddt, lockguid FROM kx_jobtask"},
    WholeRead{
        kAnyEngine, kTasksAtWork,
        "SELECT jobguid, jobtaskguid, enddt FROM kx_jobtask WHERE jobtaskstateid = 'RUNNING' AND enddt IS"
        " NOT NULL AND enddt < :now"},
    WholeRead{"SQLite", "no index begins with the application state", kJobsOfState},
    WholeRead{"MariaDB", "no index begins with the application state", kJobsOfState},
    WholeRead{"SQLite", kTasksAtWork, kCountOfTasks},
    WholeRead{"MariaDB", kTasksAtWork, kCountOfTasks},
    WholeRead{"SQLite", "its statistics tell of states on average, not that few jobs are at work",
              "SELECT jobguid, jobtypeid, jobstateid FROM kx_job WHERE jobstateid IN ('RUNNING','QUEUED')"},
};

template <typename Look>
void ForEachOn(const std::string& engine, Look look) {
    for (const WholeRead& read : kWholeReads) {
        if (read.engine == engine || read.engine.empty()) look(read);
    }
}

}  // namespace

std::string ReasonToReadAll(const std::string& shape, const std::string& engine) {
    std::string reason;
    ForEachOn(engine, [&](const WholeRead& read) {
        if (read.shape == shape) reason = read.reason;
    });
    return reason;
}

std::set<std::string> ShapesThatReadAll(const std::string& engine) {
    std::set<std::string> shapes;
    ForEachOn(engine, [&](const WholeRead& read) { shapes.insert(read.shape); });
    return shapes;
}

}  // namespace kxjob::testing_support

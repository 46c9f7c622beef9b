#include "defaults/store/sqlite_scripts.h"

#include <array>

namespace kxjob {
namespace {

constexpr std::string_view kJobTables =
    R"(CREATE TABLE IF NOT EXISTS %q%job (
    jobguid text NOT NULL PRIMARY KEY, jobtypeid text, description text, parameters text,
    appstateguid text, jobstateid text, nextjobitem integer DEFAULT 0,
    totalitemcount integer DEFAULT 0, succeededitemcount integer DEFAULT 0,
    faileditemcount integer DEFAULT 0, startdt text, lastcompletiondt text,
    sumoftimeincsq real DEFAULT 0, failurenote text, jobeditorlockguid text, lockduration real);
CREATE TABLE IF NOT EXISTS %q%JobItem (
    jobitemguid text NOT NULL PRIMARY KEY, jobguid text NOT NULL, identifier text,
    sequence integer NOT NULL, data text, jobitemstateid text, startdt text, enddt text,
    failurenote text, jobtaskguid text);
CREATE TABLE IF NOT EXISTS %q%jobtask (
    jobtaskguid text NOT NULL PRIMARY KEY, description text, jobguid text, usercontext text,
    machine text, processid integer, threadid integer, startdt text, enddt text,
    jobtaskstateid text, lastjobitem text, command text, lockguid text);
CREATE TABLE IF NOT EXISTS %q%JobType (
    jobtypeid text NOT NULL PRIMARY KEY, description text, implprogid text, notificationprogid text);
)";

constexpr std::string_view kJobIndexes =
    R"(CREATE INDEX IF NOT EXISTS %q%job_type ON %p%job (jobtypeid, appstateguid);
CREATE INDEX IF NOT EXISTS %q%job_state ON %p%job (jobstateid);
CREATE INDEX IF NOT EXISTS %q%jobitem_job ON %p%JobItem (jobguid, sequence);
CREATE INDEX IF NOT EXISTS %q%jobtask_job ON %p%jobtask (jobguid, jobtaskstateid);
)";

constexpr std::string_view kStandInTables =
    R"(CREATE TABLE IF NOT EXISTS %q%systemflag (flagname text NOT NULL PRIMARY KEY, flagvalue text);
CREATE TABLE IF NOT EXISTS %q%adminhistory (
    historyid text NOT NULL PRIMARY KEY, writtendt text NOT NULL, actioncode text NOT NULL,
    detail text, usercontext text);
CREATE TABLE IF NOT EXISTS %q%applicationstate (stateid text NOT NULL PRIMARY KEY, stateguid text);
CREATE TABLE IF NOT EXISTS %q%subsystem (subsystemid text NOT NULL PRIMARY KEY);
)";

constexpr std::array kScripts = {ScriptText{"JobTablesDDL", kJobTables, kJobIndexes},
                                 ScriptText{"StandInTablesDDL", kStandInTables, {}}};

}  // namespace

std::span<const ScriptText> SqliteScripts() {
    return kScripts;
}

}  // namespace kxjob

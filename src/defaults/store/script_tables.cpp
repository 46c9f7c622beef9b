#include "defaults/store/script_tables.h"

#include <array>

namespace kxjob {
namespace {

constexpr std::array kJobIndexes = {ScriptIndex{"job_type", "jobtypeid, appstateguid"},
                                    ScriptIndex{"job_state", "jobstateid"}};
constexpr std::array kItemIndexes = {ScriptIndex{"jobitem_job", "jobguid, sequence", true}};
constexpr std::array kTaskIndexes = {ScriptIndex{"jobtask_job", "jobguid, jobtaskstateid"}};

constexpr std::array kJobTables = {
    ScriptTable{"job",
                R"(
    jobguid %K% NOT NULL PRIMARY KEY, jobtypeid %N%, description %T%, parameters %T%,
    appstateguid %K%, jobstateid %K%, nextjobitem %I% DEFAULT 0,
    totalitemcount %I% DEFAULT 0, succeededitemcount %I% DEFAULT 0,
    faileditemcount %I% DEFAULT 0, startdt %D%, lastcompletiondt %D%,
    sumoftimeincsq %F% DEFAULT 0, failurenote %T%, jobeditorlockguid %K%, lockduration %F%)",
                kJobIndexes},
    ScriptTable{"JobItem",
                R"(
    jobitemguid %K% NOT NULL%x%, jobguid %K% NOT NULL, identifier %S%,
    sequence %I% NOT NULL, data %T%, jobitemstateid %K%, startdt %D%, enddt %D%,
    failurenote %T%, jobtaskguid %K%%y%)",
                kItemIndexes, true},
    ScriptTable{"jobtask",
                R"(
    jobtaskguid %K% NOT NULL PRIMARY KEY, description %T%, jobguid %K%, usercontext %T%,
    machine %S%, processid %I%, threadid %I%, startdt %D%, enddt %D%,
    jobtaskstateid %K%, lastjobitem %T%, command %T%, lockguid %K%)",
                kTaskIndexes},
    ScriptTable{"JobType",
                R"(
    jobtypeid %N% NOT NULL PRIMARY KEY, description %T%, implprogid %S%, notificationprogid %S%)"},
};

constexpr std::array kStandInTables = {
    ScriptTable{"systemflag", "flagname %N% NOT NULL PRIMARY KEY, flagvalue %T%"},
    ScriptTable{"adminhistory",
                R"(
    historyid %K% NOT NULL PRIMARY KEY, writtendt %D% NOT NULL, actioncode %S% NOT NULL,
    detail %T%, usercontext %T%)"},
    ScriptTable{"applicationstate", "stateid %N% NOT NULL PRIMARY KEY, stateguid %K%"},
    ScriptTable{"subsystem", "subsystemid %N% NOT NULL PRIMARY KEY"},
};

constexpr std::array kScripts = {ScriptTables{"JobTablesDDL", kJobTables},
                                 ScriptTables{"StandInTablesDDL", kStandInTables}};

}  // namespace

std::span<const ScriptTables> AllScriptTables() {
    return kScripts;
}

}  // namespace kxjob

#include "insight/doctor/expected_tables.h"

#include <array>

namespace kxjob::command {
namespace {

using Name = std::string_view;

constexpr std::array<Name, 16> kJob{
    "jobguid",     "jobtypeid",        "description",    "parameters",         "appstateguid",
    "jobstateid",  "nextjobitem",      "totalitemcount", "succeededitemcount", "faileditemcount",
    "startdt",     "lastcompletiondt", "sumoftimeincsq", "failurenote",        "jobeditorlockguid",
    "lockduration"};
constexpr std::array<Name, 10> kItem{"jobitemguid",    "jobguid", "identifier", "sequence",    "data",
                                     "jobitemstateid", "startdt", "enddt",      "failurenote", "jobtaskguid"};
constexpr std::array<Name, 13> kTask{"jobtaskguid", "description", "jobguid", "usercontext", "machine",
                                     "processid",   "threadid",    "startdt", "enddt",       "jobtaskstateid",
                                     "lastjobitem", "command",     "lockguid"};
constexpr std::array<Name, 4> kType{"jobtypeid", "description", "implprogid", "notificationprogid"};
constexpr std::array<Name, 2> kFlag{"flagname", "flagvalue"};
constexpr std::array<Name, 5> kHistory{"historyid", "writtendt", "actioncode", "detail", "usercontext"};
constexpr std::array<Name, 2> kApplicationState{"stateid", "stateguid"};
constexpr std::array<Name, 1> kSubsystem{"subsystemid"};

constexpr std::array<Name, 2> kJobIndexes{"jobtypeid, appstateguid", "jobstateid"};
constexpr std::array<Name, 1> kItemIndexes{"jobguid, sequence"};
constexpr std::array<Name, 1> kTaskIndexes{"jobguid, jobtaskstateid"};

constexpr std::array kExpectedTables{
    ExpectedTable{"job", kJob, kJobIndexes},
    ExpectedTable{"JobItem", kItem, kItemIndexes},
    ExpectedTable{"jobtask", kTask, kTaskIndexes},
    ExpectedTable{"JobType", kType, {}},
    ExpectedTable{"systemflag", kFlag, {}, false},
    ExpectedTable{"adminhistory", kHistory, {}, false},
    ExpectedTable{"applicationstate", kApplicationState, {}, false},
    ExpectedTable{"subsystem", kSubsystem, {}, false},
};

}  // namespace

std::span<const ExpectedTable> ExpectedTables() {
    return kExpectedTables;
}

}  // namespace kxjob::command

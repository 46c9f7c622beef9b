#include <optional>

#include "kxjob/caller_texts.h"
#include "statements/variant.h"
#include "support/every_method.h"
#include "work/protocol/item_lots.h"
#include "work/protocol/item_results.h"
#include "work/protocol/job_choice.h"
#include "work/protocol/job_course.h"
#include "work/protocol/task_claims.h"

namespace kxjob::testing_support {
namespace {

using command::TaskName;

const char* const kQueued = "UPDATE kx_job SET jobstateid = 'QUEUED'";
const char* const kWaiting =
    "UPDATE kx_JobItem SET jobitemstateid = NULL, jobtaskguid = NULL, sequence = 7200";
const char* const kHintBefore = "UPDATE kx_job SET nextjobitem = 7190";
const char* const kHintFarBefore = "UPDATE kx_job SET nextjobitem = 7100";
const char* const kHintBehind = "UPDATE kx_job SET nextjobitem = 7300";
const char* const kSameNumber =
    "INSERT INTO kx_JobItem (jobitemguid, jobguid, sequence)"
    " VALUES ('{FFFFFFFF-0000-4000-8000-00000000B009}', '{00000000-0000-4000-8000-00000000A001}', 7200)";
const char* const kNoItem = "DELETE FROM kx_JobItem";
const char* const kNoLock = "UPDATE kx_job SET jobeditorlockguid = NULL";
const char* const kExpired = "UPDATE kx_jobtask SET enddt = '2026-03-01T09:30:15.123Z'";

TaskName Task() {
    return {kJobGuid, kTaskGuid};
}

Variant Host(const std::string& function, const std::vector<std::string>& conditions,
             const std::vector<std::string>& before, void (*call)(const VariantStore& store)) {
    return {.method = function, .conditions = conditions, .before = before, .call = call};
}

void Claim(const VariantStore& store) {
    command::ItemLots(store.host, Task()).Claim(1);
}

std::vector<Variant> Choices() {
    return {
        Host("ChooseJob", {"an item waits"}, {kQueued, kWaiting},
             [](const VariantStore& store) { ChooseJob(store.host, {}); }),
        Host("ChooseJob", {"no item waits", "an item is in work"}, {},
             [](const VariantStore& store) { ChooseJob(store.host, {}); }),
        Host("ChooseJob", {"no item waits", "no item is in work"}, {kNoItem},
             [](const VariantStore& store) { ChooseJob(store.host, {}); }),
    };
}

std::vector<Variant> Courses() {
    return {
        Host("StartJob", {}, {kQueued},
             [](const VariantStore& store) { StartJob(store.host, kJobGuid, kOtherLockGuid); }),
        Host("EndJob", {"items are unfinished"}, {},
             [](const VariantStore& store) { EndJob(store.host, Task(), 90.5); }),
        Host("EndJob", {"no item is unfinished"}, {kNoItem},
             [](const VariantStore& store) { EndJob(store.host, Task(), 90.5); }),
        Host("EndJob", {"no item is unfinished", "the job has no lock"}, {kNoItem, kNoLock},
             [](const VariantStore& store) { EndJob(store.host, Task(), 90.5); }),
    };
}

Variant Closing(bool succeeded, bool isWhereKnown) {
    return {.method = "CloseTask",
            .conditions = {succeeded ? "the work succeeded" : "the work failed",
                           isWhereKnown ? "it is known where the items are"
                                        : "it is not known where the items are"},
            .before = {},
            .call = [succeeded, isWhereKnown](const VariantStore& store) {
                const command::SequenceRange range{kItemSequence, kItemSequence + 10};
                CloseTask(store.host, Task(), succeeded, isWhereKnown ? std::optional(range) : std::nullopt);
            }};
}

std::vector<Variant> Claims() {
    return {
        Host("RegisterTask", {}, {},
             [](const VariantStore& store) { RegisterTask(store.host, kJobGuid, "a description", 60); }),
        Host("RenewClaims", {}, {},
             [](const VariantStore& store) { RenewClaims(store.host, {kTaskGuid}, 60); }),
        Host("StandingsOf", {}, {}, [](const VariantStore& store) { StandingsOf(store.host, {kTaskGuid}); }),
        Closing(true, true),
        Closing(true, false),
        Closing(false, true),
        Closing(false, false),
        Host("ExpiredTasks", {}, {}, [](const VariantStore& store) { ExpiredTasks(store.host); }),
        Host("TakeOver", {}, {kExpired},
             [](const VariantStore& store) {
                 TakeOver(store.host, {Task(), "2026-03-01T09:30:15.123Z"});
             }),
        Host("IsTakenOver", {}, {}, [](const VariantStore& store) { IsTakenOver(store.host, kTaskGuid); }),
    };
}

std::vector<Variant> Lots() {
    return {
        Host("ItemLots::Claim", {"the job's hint leads to a waiting item"},
             {kWaiting, "UPDATE kx_job SET nextjobitem = 7200"}, Claim),
        Host("ItemLots::Claim", {"the next waiting item is far behind the hint"}, {kWaiting, kHintFarBefore},
             Claim),
        Host("ItemLots::Claim", {"the job's hint is behind all waiting items"}, {kWaiting, kHintBehind},
             Claim),
        Host("ItemLots::Claim", {"items share the last number of the lot"},
             {kWaiting, kSameNumber, "UPDATE kx_job SET nextjobitem = 7200"}, Claim),
        Host("ItemLots::Claim", {"nothing could be claimed"},
             {kWaiting, "UPDATE kx_job SET nextjobitem = 7200", "UPDATE kx_job SET jobstateid = 'COMPLETE'"},
             Claim),
        Host("ItemLots::Claim", {"nothing could be claimed", "the job is RUNNING"},
             {kWaiting, "UPDATE kx_job SET nextjobitem = 7200",
              "UPDATE kx_jobtask SET jobtaskstateid = 'FAILED'"},
             Claim),
        Host("ItemLots::Held", {}, {},
             [](const VariantStore& store) { command::ItemLots(store.host, Task()).Held(); }),
        Host("LowestWaiting", {}, {},
             [](const VariantStore& store) { command::LowestWaiting(store.host, kJobGuid); }),
        Host("LowestWaitingFrom", {}, {},
             [](const VariantStore& store) {
                 command::LowestWaitingFrom(store.host, kJobGuid, kAnySequence);
             }),
        Host("HasUnfinishedItems", {}, {},
             [](const VariantStore& store) { command::HasUnfinishedItems(store.host, kJobGuid); }),
    };
}

Variant Finishing(bool first, bool second, const std::string& note) {
    return {.method = "FinishItems",
            .conditions = {first || second ? "items succeeded" : "no item succeeded",
                           first && second ? "no item failed" : "items failed",
                           note.empty() ? "without a note" : "with a note"},
            .before = {},
            .call = [first, second, note](const VariantStore& store) {
                std::vector<command::ItemResult> results;
                for (const bool succeeded : {first, second}) {
                    results.push_back({.item = kItemGuid,
                                       .sequence = kItemSequence,
                                       .succeeded = succeeded,
                                       .start = "a start",
                                       .end = "an end",
                                       .note = note});
                }
                FinishItems(store.host, Task(), results, 0.25);
            }};
}

std::vector<Variant> Finishings() {
    std::vector<Variant> variants;
    for (const char* note : {"", "a note"}) {
        variants.push_back(Finishing(true, true, note));
        variants.push_back(Finishing(false, false, note));
        variants.push_back(Finishing(true, false, note));
    }
    return variants;
}

}  // namespace

Family HostFamily() {
    Family family{.title = "The worker host",
                  .methods = {"ChooseJob", "StartJob", "EndJob", "RegisterTask", "RenewClaims", "StandingsOf",
                              "CloseTask", "ExpiredTasks", "TakeOver", "IsTakenOver", "ItemLots::Claim",
                              "ItemLots::Held", "LowestWaiting", "LowestWaitingFrom", "HasUnfinishedItems",
                              "FinishItems"},
                  .variants = Choices()};
    Append(family.variants, Courses());
    Append(family.variants, Claims());
    Append(family.variants, Lots());
    Append(family.variants, Finishings());
    return family;
}

}  // namespace kxjob::testing_support

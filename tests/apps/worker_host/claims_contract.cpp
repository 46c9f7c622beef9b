#include <gmock/gmock.h>

#include <set>

#include "apps/worker_host/work_contract.h"
#include "contract/native/file_engines.h"
#include "defaults/store/store_test_support.h"
#include "work/protocol/item_lots.h"
#include "work/protocol/item_results.h"

namespace kxjob::testing_support {
namespace {

using command::ClaimedItem;
using command::CloseTask;
using command::ExpiredTask;
using command::ExpiredTasks;
using command::FinishItems;
using command::ItemLots;
using command::ItemResult;
using command::RenewClaims;
using command::StandingsOf;
using command::TakeOver;
using command::TaskName;
using testing::ElementsAre;

constexpr const char* kStart = "2026-03-01T09:30:15.123Z";
constexpr const char* kEnd = "2026-03-01T09:30:16.000Z";

std::vector<std::string> IdentifiersOf(const std::vector<ClaimedItem>& items) {
    std::vector<std::string> identifiers;
    for (const ClaimedItem& item : items) identifiers.push_back(item.identifier);
    return identifiers;
}

ItemResult Succeeded(const ClaimedItem& item) {
    return {item.guid, item.sequence, true, kStart, kEnd, ""};
}

/// How tasks claim items, finish them, and lose them.
class ClaimsContract : public WorkContract {
protected:
    std::vector<ClaimedItem> Claim(const TaskName& name, std::size_t most) {
        return ItemLots(*store_, name).Claim(most);
    }
    void Finish(const TaskName& name, const ItemResult& result) {
        FinishItems(*store_, name, {result}, 0.25);
    }
    /// Takes over all whose claims have run out.
    void TakeOverExpired() {
        for (const ExpiredTask& task : ExpiredTasks(*store_)) TakeOver(*store_, task);
    }
};

TEST_P(ClaimsContract, ClaimsTheFirstWaitingItems) {
    const std::string job = MakeJob("TYPE", "RUNNING", 5);
    const TaskName first = NewTask(job);
    const TaskName second = NewTask(job);

    EXPECT_THAT(IdentifiersOf(Claim(first, 2)), ElementsAre("item 0", "item 1"));
    EXPECT_EQ(JobCell(job, "nextjobitem"), Value(2));
    EXPECT_THAT(IdentifiersOf(Claim(second, 2)), ElementsAre("item 2", "item 3"));
    EXPECT_THAT(IdentifiersOf(Claim(first, 2)), ElementsAre("item 4"));
    EXPECT_THAT(Claim(second, 2), testing::IsEmpty());
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_JobItem WHERE jobitemstateid = 'RUNNING' AND startdt IS NOT NULL"
                   " AND jobtaskguid = '" +
                   first.task + "'"),
              Value(3));
}

TEST_P(ClaimsContract, ClaimsEachItemOnceWhateverItsNumber) {
    const std::vector<std::int64_t> sequences{-7, -7, -7, 0, 3, 3, 3, 3, 3, 90'000, 2'000'000'000};
    const std::string job = MakeJob("TYPE", "RUNNING", sequences);
    const std::vector<TaskName> tasks{NewTask(job), NewTask(job)};
    std::set<std::string> claimed;
    std::size_t count = 0;

    for (std::size_t turn = 0;; ++turn) {
        const std::vector<ClaimedItem> items = Claim(tasks[turn % 2], 2);
        if (items.empty()) break;
        EXPECT_LE(items.size(), 2U);
        for (const ClaimedItem& item : items) claimed.insert(item.guid);
        count += items.size();
        for (const ClaimedItem& item : items) Finish(tasks[turn % 2], Succeeded(item));
    }

    EXPECT_EQ(count, sequences.size());
    EXPECT_EQ(claimed.size(), sequences.size());
    EXPECT_EQ(ItemsAt(job, "COMPLETE"), Value(11));
}

TEST_P(ClaimsContract, TakesAnEmptyStateForWaitingToo) {
    const std::string job = MakeJob("TYPE", "RUNNING", 1);
    store_->Execute("UPDATE kx_JobItem SET jobitemstateid = ''");

    EXPECT_EQ(Claim(NewTask(job), 5).size(), 1U);
}

TEST_P(ClaimsContract, ClaimsNothingOfAJobThatIsNotRunning) {
    const std::string job = MakeJob("TYPE", "CANCELLED", 3);

    EXPECT_THAT(Claim(NewTask(job), 2), testing::IsEmpty());
    EXPECT_EQ(ItemsAt(job, ""), Value(3));
}

TEST_P(ClaimsContract, WritesResultsAndCountsThemTogether) {
    const std::string job = MakeJob("TYPE", "RUNNING", 3);
    const TaskName name = NewTask(job);
    const std::vector<ClaimedItem> items = Claim(name, 3);

    FinishItems(*store_, name,
                {{items[0].guid, items[0].sequence, true, kStart, kEnd, ""},
                 {items[1].guid, items[1].sequence, false, kStart, kEnd, "it's broken"},
                 {items[2].guid, items[2].sequence, true, kStart, kEnd, "a result"}},
                0.75);

    EXPECT_EQ(store_->Query("SELECT jobitemstateid, startdt, enddt, failurenote FROM kx_JobItem"
                            " ORDER BY sequence"),
              Rows({{"COMPLETE", kStart, kEnd, Null{}},
                    {"FAILED", kStart, kEnd, "it's broken"},
                    {"COMPLETE", kStart, kEnd, "a result"}}));
    EXPECT_EQ(store_->Query("SELECT succeededitemcount, faileditemcount, lastcompletiondt, sumoftimeincsq"
                            " FROM kx_job"),
              Rows({{2, 1, kEnd, 0.75}}));
    EXPECT_EQ(Cell("SELECT lastjobitem FROM kx_jobtask"), Value(items[2].guid));
}

TEST_P(ClaimsContract, ChangesNothingWhenResultsAreWrittenAgain) {
    const std::string job = MakeJob("TYPE", "RUNNING", 2);
    const TaskName name = NewTask(job);
    const std::vector<ClaimedItem> items = Claim(name, 2);

    Finish(name, Succeeded(items[0]));
    Finish(name, Succeeded(items[0]));

    EXPECT_EQ(JobCell(job, "succeededitemcount"), Value(1));
    EXPECT_EQ(JobCell(job, "sumoftimeincsq"), Value(0.25));
}

TEST_P(ClaimsContract, GivesBackWhatAnEndedTaskHolds) {
    const std::string job = MakeJob("TYPE", "RUNNING", 5);
    const TaskName name = NewTask(job);
    const std::vector<ClaimedItem> items = Claim(name, 4);
    Finish(name, Succeeded(items[0]));

    CloseTask(*store_, name, true);

    EXPECT_EQ(TaskState(name), Value("COMPLETE"));
    EXPECT_EQ(ItemsAt(job, ""), Value(4));
    EXPECT_EQ(JobCell(job, "nextjobitem"), Value(1));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_JobItem WHERE startdt IS NULL AND jobtaskguid IS NULL"),
              Value(4));
    EXPECT_THAT(IdentifiersOf(Claim(NewTask(job), 2)), ElementsAre("item 1", "item 2"));
}

TEST_P(ClaimsContract, TakesOverATaskWhoseClaimHasRunOut) {
    const std::string job = MakeJob("TYPE", "RUNNING", 5);
    const TaskName dead = NewTask(job);
    const TaskName living = NewTask(job);
    Claim(dead, 2);
    Claim(living, 2);
    LetExpire(dead);

    TakeOverExpired();

    EXPECT_EQ(TaskState(dead), Value("FAILED"));
    EXPECT_EQ(TaskState(living), Value("RUNNING"));
    EXPECT_EQ(JobCell(job, "nextjobitem"), Value(0));
    EXPECT_THAT(IdentifiersOf(Claim(living, 2)), ElementsAre("item 0", "item 1"));
}

TEST_P(ClaimsContract, LeavesATaskAloneThatRenewedItsClaimInTime) {
    const std::string job = MakeJob("TYPE", "RUNNING", 3);
    const TaskName name = NewTask(job);
    Claim(name, 2);
    LetExpire(name);
    const std::vector<ExpiredTask> expired = ExpiredTasks(*store_);
    ASSERT_EQ(expired.size(), 1U);
    RenewClaims(*store_, {name.task}, 60);

    TakeOver(*store_, expired[0]);

    EXPECT_EQ(TaskState(name), Value("RUNNING"));
    EXPECT_EQ(ItemsAt(job, "RUNNING"), Value(2));
    EXPECT_THAT(ExpiredTasks(*store_), testing::IsEmpty());
}

TEST_P(ClaimsContract, LeavesTasksOfOtherProgramsAlone) {
    const std::string job = MakeJob("TYPE", "RUNNING", 1);
    store_->Jobs().RegisterJobTask(connection_.connectionString, "kx_", "another's", job, "", "", 1, 1);

    EXPECT_THAT(ExpiredTasks(*store_), testing::IsEmpty());
}

TEST_P(ClaimsContract, LetsATaskThatLostItsClaimChangeNothing) {
    const std::string job = MakeJob("TYPE", "RUNNING", 1);
    const TaskName paused = NewTask(job);
    const ClaimedItem item = Claim(paused, 1).at(0);
    LetExpire(paused);
    TakeOverExpired();

    Finish(paused, Succeeded(item));  // before anybody has it
    EXPECT_EQ(ItemsAt(job, ""), Value(1));
    EXPECT_THAT(Claim(paused, 1), testing::IsEmpty());
    const TaskName other = NewTask(job);
    ASSERT_EQ(Claim(other, 1).size(), 1U);
    Finish(paused, Succeeded(item));  // while another has it
    EXPECT_EQ(ItemsAt(job, "RUNNING"), Value(1));
    Finish(other, {item.guid, item.sequence, false, kStart, kEnd, "failed at last"});
    Finish(paused, Succeeded(item));  // after another has finished it
    CloseTask(*store_, paused, true);

    EXPECT_EQ(ItemsAt(job, "FAILED"), Value(1));
    EXPECT_EQ(TaskState(paused), Value("FAILED"));
    EXPECT_EQ(store_->Query("SELECT succeededitemcount, faileditemcount, sumoftimeincsq FROM kx_job"),
              Rows({{0, 1, 0.25}}));
}

TEST_P(ClaimsContract, TellsHowTasksStandAndWhatTheyAreTold) {
    const std::string job = MakeJob("TYPE", "RUNNING", 1);
    const TaskName running = NewTask(job);
    const TaskName ended = NewTask(job);
    CloseTask(*store_, ended, false);
    store_->Jobs().UpdateTaskCommand(connection_.connectionString, "kx_", running.task, "STOP");

    const auto standings = StandingsOf(*store_, {ended.task, "gone", running.task});

    ASSERT_EQ(standings.size(), 3U);
    EXPECT_FALSE(standings[0].isRunning);
    EXPECT_FALSE(standings[1].isRunning);
    EXPECT_TRUE(standings[2].isRunning);
    EXPECT_EQ(standings[2].command, "STOP");
}

INSTANTIATE_TEST_SUITE_P(Engines, ClaimsContract,
                         testing::Values(SqliteFile(), PostgreSqlServer(), MariaDbServer()), EngineName);

}  // namespace
}  // namespace kxjob::testing_support

#include <gmock/gmock.h>

#include "apps/worker_host/work_contract.h"
#include "contract/native/file_engines.h"
#include "kxjob/automation_error.h"
#include "kxjob/caller_texts.h"
#include "work/protocol/item_lots.h"
#include "work/protocol/item_results.h"
#include "work/protocol/job_choice.h"
#include "work/protocol/job_course.h"

namespace kxjob::testing_support {
namespace {

using command::ChooseJob;
using command::ClaimedItem;
using command::CloseTask;
using command::EndJob;
using command::FinishItems;
using command::ItemLots;
using command::JobChoice;
using command::JobEnd;
using command::JobStart;
using command::StartJob;
using command::TaskName;

/// How hosts choose a job, and bring it from its start to its end.
class JobCourseContract : public WorkContract {
protected:
    void SetUp() override {
        WorkContract::SetUp();
        if (IsSkipped()) return;
        AddType("TYPE", "kxTimer_83.Timer");
        AddType("OTHER", "kxTimer_83.Timer");
        AddType("ELSEWHERE", "Nowhere_83.Component");
    }
    void FinishAll(const TaskName& name) {
        for (const ClaimedItem& item : ItemLots(*store_, name).Claim(100)) {
            FinishItems(*store_, name, {{item.guid, item.sequence, true, NewTime(), NewTime(), ""}}, 0);
        }
    }
    static std::string NewTime() { return NowISODateTime(); }
    Value HistoryEntries(const std::string& job, const std::string& state) {
        return Cell(
            "SELECT COUNT(*) FROM kx_adminhistory WHERE actioncode = 'JOB_STATUS_UPDATE' AND detail ="
            " '<job><jobguid>" +
            job + "</jobguid><jobstateid>" + state + "</jobstateid></job>'");
    }
    std::string Chosen(const command::WantedJobs& filter = {}) {
        const JobChoice choice = ChooseJob(*store_, filter);
        return choice.job ? choice.job->guid : "";
    }
};

TEST_P(JobCourseContract, StartsAQueuedJobOnce) {
    const std::string job = MakeJob("TYPE", "QUEUED", 1);
    const std::string lock = NewGuid();

    EXPECT_EQ(StartJob(*store_, job, lock), JobStart::ByThisCall);
    EXPECT_EQ(StartJob(*store_, job, NewGuid()), JobStart::Already);

    EXPECT_EQ(JobCell(job, "jobstateid"), Value("RUNNING"));
    EXPECT_EQ(JobCell(job, "jobeditorlockguid"), Value(lock));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_job WHERE startdt IS NOT NULL"), Value(1));
    EXPECT_EQ(HistoryEntries(job, "RUNNING"), Value(1));
}

TEST_P(JobCourseContract, StartsNoJobThatIsNotQueued) {
    const std::string job = MakeJob("TYPE", "READY", 1);

    EXPECT_EQ(StartJob(*store_, job, NewGuid()), JobStart::NotToBeWorked);
    EXPECT_EQ(StartJob(*store_, "gone", NewGuid()), JobStart::NotToBeWorked);
    EXPECT_EQ(JobCell(job, "jobstateid"), Value("READY"));
}

TEST_P(JobCourseContract, EndsAJobOnceWhenNothingIsLeft) {
    const std::string job = MakeJob("TYPE", "QUEUED", 2);
    StartJob(*store_, job, NewGuid());
    const TaskName name = NewTask(job);
    const TaskName other = NewTask(job);
    EXPECT_EQ(EndJob(*store_, name, 60), JobEnd::NotYet);
    FinishAll(name);

    EXPECT_EQ(EndJob(*store_, name, 60), JobEnd::ByThisCall);
    EXPECT_EQ(EndJob(*store_, other, 60), JobEnd::ByOthers);

    EXPECT_EQ(JobCell(job, "jobstateid"), Value("COMPLETE"));
    EXPECT_EQ(HistoryEntries(job, "COMPLETE"), Value(1));
}

TEST_P(JobCourseContract, LeavesNoLockThatATaskCouldExchangeAfterTheEnd) {
    const std::string job = MakeJob("TYPE", "QUEUED", 1);
    StartJob(*store_, job, NewGuid());
    const TaskName name = NewTask(job);
    const TaskName other = NewTask(job);
    FinishAll(name);
    ASSERT_EQ(EndJob(*store_, name, 60), JobEnd::ByThisCall);

    const std::string seen =
        Cell("SELECT lockguid FROM kx_jobtask WHERE jobtaskguid = '" + name.task + "'").ToText();
    EXPECT_THROW(store_->Jobs().GetNewLockExcludingInterlopers(connection_.connectionString, "kx_", job,
                                                               other.task, seen, 60),
                 AutomationError);
}

TEST_P(JobCourseContract, EndsNoJobWhoseItemsAreInWork) {
    const std::string job = MakeJob("TYPE", "RUNNING", 1);
    const TaskName name = NewTask(job);
    ItemLots(*store_, name).Claim(1);

    EXPECT_EQ(EndJob(*store_, name, 60), JobEnd::NotYet);
}

TEST_P(JobCourseContract, EndsAJobThatHasNoLockYet) {
    const std::string job = MakeJob("TYPE", "RUNNING", 1);
    const TaskName name = NewTask(job);
    FinishAll(name);

    EXPECT_EQ(EndJob(*store_, name, 60), JobEnd::ByThisCall);
}

TEST_P(JobCourseContract, LeavesTheEndToALivingHolderOfTheLock) {
    const std::string job = MakeJob("TYPE", "QUEUED", 1);
    const std::string lock = NewGuid();
    StartJob(*store_, job, lock);
    const TaskName name = NewTask(job);
    const TaskName holder = NewTask(job);
    FinishAll(name);
    store_->Jobs().UpdateJobTaskLock(connection_.connectionString, "kx_", holder.task, lock);

    EXPECT_EQ(EndJob(*store_, name, 60), JobEnd::ByOthers);
    EXPECT_EQ(JobCell(job, "jobstateid"), Value("RUNNING"));
    CloseTask(*store_, holder, false);
    EXPECT_EQ(EndJob(*store_, name, 60), JobEnd::ByThisCall);
}

TEST_P(JobCourseContract, ChoosesAQueuedJobBeforeARunningOne) {
    MakeJob("TYPE", "RUNNING", 1);
    const std::string queued = MakeJob("TYPE", "QUEUED", 1);

    EXPECT_EQ(Chosen(), queued);
}

TEST_P(JobCourseContract, ChoosesTheRunningJobWithTheFewestTasksThatHasItems) {
    const std::string busy = MakeJob("TYPE", "RUNNING", 2);
    const std::string quiet = MakeJob("TYPE", "RUNNING", 1);
    const TaskName name = NewTask(busy);
    EXPECT_EQ(Chosen(), quiet);

    ItemLots(*store_, {quiet, name.task}).Claim(1);  // what is in work elsewhere is nothing to do
    EXPECT_EQ(Chosen(), busy);
}

TEST_P(JobCourseContract, ChoosesOnlyWhatTheFilterAndThisMachineAllow) {
    MakeJob("ELSEWHERE", "QUEUED", 1);
    EXPECT_EQ(Chosen(), "");
    EXPECT_FALSE(ChooseJob(*store_, {}).anythingLeft) << "nothing that this machine could do";

    const std::string job = MakeJob("TYPE", "QUEUED", 1);
    const std::string other = MakeJob("OTHER", "QUEUED", 1);
    EXPECT_EQ(Chosen({.type = "OTHER", .only = ""}), other);
    EXPECT_EQ(Chosen({.type = "", .only = job}), job);
    EXPECT_EQ(
        Chosen({.type = "", .only = "", .isAvoided = [&](const std::string& one) { return one != other; }}),
        other);
}

TEST_P(JobCourseContract, WaitsForItemsInWorkAndEndsWhatIsLeftFinished) {
    const std::string job = MakeJob("TYPE", "RUNNING", 1);
    const TaskName name = NewTask(job);
    const std::vector<ClaimedItem> items = ItemLots(*store_, name).Claim(1);
    const JobChoice inWork = ChooseJob(*store_, {});
    EXPECT_FALSE(inWork.job);
    EXPECT_TRUE(inWork.anythingLeft);

    FinishItems(*store_, name, {{items[0].guid, items[0].sequence, true, NewTime(), NewTime(), ""}}, 0);
    EXPECT_EQ(Chosen(), job) << "its host died before it could end it";
}

TEST_P(JobCourseContract, LeavesAJobWithoutItemsAlone) {
    MakeJob("TYPE", "QUEUED", 0);

    const JobChoice choice = ChooseJob(*store_, {});
    EXPECT_FALSE(choice.job);
    EXPECT_FALSE(choice.anythingLeft);
}

TEST_P(JobCourseContract, ChoosesAJobBesideOneOfAnUnknownType) {
    MakeJob("UNKNOWN", "QUEUED", 1);
    const std::string job = MakeJob("TYPE", "QUEUED", 1);

    EXPECT_EQ(Chosen(), job);
}

INSTANTIATE_TEST_SUITE_P(Engines, JobCourseContract,
                         testing::Values(SqliteFile(), PostgreSqlServer(), MariaDbServer()), EngineName);

}  // namespace
}  // namespace kxjob::testing_support

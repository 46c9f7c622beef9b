#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "apps/worker_host/host_process.h"
#include "apps/worker_host/work_contract.h"
#include "contract/native/file_engines.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "work/protocol/task_claims.h"

namespace kxjob::testing_support {
namespace {

using command::TaskName;
using testing::AllOf;
using testing::HasSubstr;

/// `kxjob work` as a process, on jobs whose items are done by a shared library or by a shell script.
class WorkCommand : public WorkContract {
protected:
    void SetUp() override {
        WorkContract::SetUp();
        AddType("LIBRARY", "Work_83.Worker");
        AddType("SCRIPT", "Script_83.Script");
        AddType("ELSEWHERE", "Nowhere_83.Component");
        std::ofstream(folder_.File("kxjob.conf"), std::ios::app)
            << WorkComponentLine() << "component.Script_83.Script.command = " << folder_.File("script")
            << "\n";
    }
    /// What the script does for each item.
    void WriteScript(const std::string& lines) {
        std::ofstream(folder_.File("script")) << "#!/bin/sh\n" << lines;
        std::filesystem::permissions(folder_.Path("script"), std::filesystem::perms::owner_all);
    }
    /// The script then says that it has come to item 3, and does not end before OpenGate.
    void WriteScriptThatWaitsAtItem3() {
        WriteScript(
            "[ \"$KXJOB_IDENTIFIER\" = 'item 3' ] || exit 0\n"
            "touch " +
            folder_.File("arrived") +
            "\n"
            "while [ ! -e " +
            folder_.File("gate") + " ]; do sleep 0.01; done\n");
    }
    void WaitUntilItem3() const {
        WaitFor([this] { return std::filesystem::exists(folder_.Path("arrived")); });
    }
    void OpenGate() const { std::ofstream(folder_.File("gate")) << ""; }
    template <typename Condition>
    static void WaitFor(Condition&& holds) {
        while (!holds()) std::this_thread::yield();
    }
    HostProcess Host(std::vector<std::string> options) {
        return {folder_, "host " + std::to_string(++hosts_), connection_, std::move(options)};
    }
    /// Runs a host until there is nothing left to do.
    std::string OutputOfHost(std::vector<std::string> options = {}) {
        options.emplace_back("--until-empty");
        HostProcess host = Host(std::move(options));
        EXPECT_EQ(host.ExitStatus(), 0) << host.Err();
        return host.Out();
    }
    Value NoteOf(const std::string& item) {
        return Cell("SELECT failurenote FROM kx_JobItem WHERE identifier = '" + item + "'");
    }
    TaskName OnlyTask(const std::string& job) {
        return {job, Cell("SELECT jobtaskguid FROM kx_jobtask WHERE jobtaskstateid = 'RUNNING'").ToText()};
    }

    int hosts_ = 0;
};

TEST_P(WorkCommand, RunsAProgramForEachItemAndKeepsItsNotes) {
    WriteScript(
        "[ \"$KXJOB_IDENTIFIER\" = 'item 1' ] && { echo broken >&2; exit 3; }\n"
        "echo \"did $KXJOB_IDENTIFIER\"\n");
    const std::string job = MakeJob("SCRIPT", "QUEUED", 3);

    const std::string out = OutputOfHost();

    EXPECT_THAT(out, HasSubstr("Job " + job + " is RUNNING.\n"));
    EXPECT_THAT(out, HasSubstr("Job " + job + " is COMPLETE.\n"));
    EXPECT_THAT(out, HasSubstr("3 items done, 1 of them failed, 1 jobs ended"));
    EXPECT_EQ(NoteOf("item 0"), Value("did item 0"));
    EXPECT_THAT(NoteOf("item 1").ToText(), AllOf(HasSubstr("Process ID / Thread ID: "), HasSubstr("broken")));
    EXPECT_EQ(store_->Query("SELECT jobstateid, succeededitemcount, faileditemcount FROM kx_job"),
              Rows({{"COMPLETE", 2, 1}}));
    EXPECT_EQ(store_->Query("SELECT description, jobtaskstateid FROM kx_jobtask"),
              Rows({{"kxjob work, thread 1", "COMPLETE"}}));
}

TEST_P(WorkCommand, KeepsAnEarlierNoteInFrontOfAFailure) {
    const std::string job = MakeJob("LIBRARY", "QUEUED", 1);
    store_->Execute("UPDATE kx_JobItem SET data = 'fail', failurenote = 'failed before'");

    OutputOfHost();

    EXPECT_EQ(ItemsAt(job, "FAILED"), Value(1));
    EXPECT_THAT(NoteOf("item 0").ToText(),
                AllOf(testing::StartsWith("failed before\r\n\r\n"), testing::EndsWith("as asked for")));
}

TEST_P(WorkCommand, NotesOnTheJobWhatItsNotificationRaises) {
    AddType("TOLD", "Work_83.Worker", "Work_83.Worker");
    const std::string job = MakeJob("TOLD", "QUEUED", 1);

    OutputOfHost();

    EXPECT_EQ(JobCell(job, "jobstateid"), Value("COMPLETE"));
    EXPECT_THAT(JobCell(job, "failurenote").ToText(), HasSubstr("told that " + job + " is COMPLETE"));
}

TEST_P(WorkCommand, LeavesAJobThatCannotBeDoneHereAlone) {
    const std::string job = MakeJob("ELSEWHERE", "QUEUED", 1);

    OutputOfHost();

    EXPECT_EQ(JobCell(job, "jobstateid"), Value("QUEUED"));
    EXPECT_EQ(ItemsAt(job, ""), Value(1));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_jobtask"), Value(0));
}

TEST_P(WorkCommand, EndsAfterOneJobWhenAskedTo) {
    MakeJob("LIBRARY", "QUEUED", 20);
    MakeJob("LIBRARY", "QUEUED", 20);
    HostProcess host = Host({"--once", "--threads", "3"});

    EXPECT_EQ(host.ExitStatus(), 0) << host.Err();
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_job WHERE jobstateid = 'COMPLETE'"), Value(1));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_JobItem WHERE jobitemstateid = 'COMPLETE'"), Value(20));
}

TEST_P(WorkCommand, TakesOnlyJobsOfTheTypeAskedFor) {
    WriteScript("");
    const std::string job = MakeJob("LIBRARY", "QUEUED", 2);
    const std::string other = MakeJob("SCRIPT", "QUEUED", 2);

    OutputOfHost({"--type", "LIBRARY"});

    EXPECT_EQ(JobCell(job, "jobstateid"), Value("COMPLETE"));
    EXPECT_EQ(JobCell(other, "jobstateid"), Value("QUEUED"));
}

TEST_P(WorkCommand, FinishesTheItemInWorkAndGivesBackTheOthersAtASignal) {
    WriteScriptThatWaitsAtItem3();
    const std::string job = MakeJob("SCRIPT", "QUEUED", 10);
    HostProcess host = Host({});
    WaitUntilItem3();

    host.SendToGroup(SIGINT);
    WaitFor([&] { return host.Out().find("Stopping") != std::string::npos; });
    OpenGate();

    EXPECT_EQ(host.ExitStatus(), 0) << host.Err();
    EXPECT_EQ(ItemsAt(job, "COMPLETE"), Value(4));
    EXPECT_EQ(ItemsAt(job, ""), Value(6));
    EXPECT_EQ(store_->Query("SELECT jobstateid, nextjobitem, succeededitemcount FROM kx_job"),
              Rows({{"RUNNING", 4, 4}}));
    EXPECT_EQ(Cell("SELECT jobtaskstateid FROM kx_jobtask"), Value("COMPLETE"));
}

TEST_P(WorkCommand, EndsAtOnceAtASecondSignalAndLeavesItsItemsToTheLease) {
    WriteScriptThatWaitsAtItem3();
    const std::string job = MakeJob("SCRIPT", "QUEUED", 6);
    HostProcess host = Host({"--lease", "0.5"});
    WaitUntilItem3();

    host.Send(SIGTERM);
    WaitFor([&] { return host.Out().find("Stopping") != std::string::npos; });
    host.Send(SIGTERM);

    EXPECT_EQ(host.ExitStatus(), 128 + SIGTERM);
    EXPECT_EQ(ItemsAt(job, "COMPLETE"), Value(3));
    const TaskName task = OnlyTask(job);
    OpenGate();
    EXPECT_THAT(OutputOfHost({"--lease", "0.5", "--poll", "0.1"}),
                HasSubstr("Task " + task.task + " has been silent for too long"));
    EXPECT_EQ(TaskState(task), Value("FAILED"));
    EXPECT_EQ(store_->Query("SELECT jobstateid, succeededitemcount FROM kx_job"), Rows({{"COMPLETE", 6}}));
}

TEST_P(WorkCommand, EndsAWorkerThatIsToldToStop) {
    WriteScriptThatWaitsAtItem3();
    const std::string job = MakeJob("SCRIPT", "QUEUED", 10);
    HostProcess host = Host({"--lease", "0.6"});
    WaitUntilItem3();
    const TaskName task = OnlyTask(job);

    store_->Jobs().UpdateTaskCommand(connection_.connectionString, "kx_", task.task, "STOP");
    for (int renewals = 0; renewals < 2; ++renewals) {  // a host reads commands between two renewals
        const Value before = Cell("SELECT enddt FROM kx_jobtask");
        WaitFor([&] { return Cell("SELECT enddt FROM kx_jobtask") != before; });
    }
    OpenGate();

    EXPECT_EQ(host.ExitStatus(), 0) << host.Err();
    EXPECT_EQ(TaskState(task), Value("COMPLETE"));
    EXPECT_EQ(ItemsAt(job, "COMPLETE"), Value(4));
    EXPECT_EQ(ItemsAt(job, ""), Value(6));
}

TEST_P(WorkCommand, DoesItemsAgainWhoseTaskWasTakenOverMeanwhile) {
    WriteScriptThatWaitsAtItem3();
    const std::string job = MakeJob("SCRIPT", "QUEUED", 6);
    HostProcess host = Host({"--until-empty"});
    WaitUntilItem3();
    const TaskName task = OnlyTask(job);

    LetExpire(task);
    for (const command::ExpiredTask& expired : command::ExpiredTasks(*store_)) TakeOver(*store_, expired);
    ASSERT_EQ(TaskState(task), Value("FAILED"));
    OpenGate();

    EXPECT_EQ(host.ExitStatus(), 0) << host.Err();
    EXPECT_EQ(store_->Query("SELECT jobstateid, succeededitemcount, faileditemcount FROM kx_job"),
              Rows({{"COMPLETE", 6, 0}}));
    EXPECT_EQ(TaskState(task), Value("FAILED"));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_JobItem WHERE jobtaskguid = '" + task.task + "'"), Value(3));
}

TEST_P(WorkCommand, ChangesNothingThatAnotherFinishedWhileItWasPausedBeyondItsLease) {
    WriteScriptThatWaitsAtItem3();
    const std::string job = MakeJob("SCRIPT", "QUEUED", 6);
    HostProcess paused = Host({"--until-empty", "--lease", "0.5"});
    WaitUntilItem3();
    const TaskName task = OnlyTask(job);
    paused.Send(SIGSTOP);

    HostProcess other = Host({"--until-empty", "--lease", "0.5"});
    WaitFor([&] {
        return Cell(
                   "SELECT COUNT(*) FROM kx_JobItem WHERE identifier = 'item 3' AND jobitemstateid = "
                   "'RUNNING'"
                   " AND jobtaskguid <> '" +
                   task.task + "'") == Value(1);
    });
    OpenGate();
    EXPECT_EQ(other.ExitStatus(), 0) << other.Err();
    const std::string rows = "SELECT * FROM kx_JobItem ORDER BY sequence";
    const Value finished = store_->Query(rows);
    paused.Send(SIGCONT);
    EXPECT_EQ(paused.ExitStatus(), 0) << paused.Err();

    EXPECT_EQ(store_->Query(rows), finished);
    EXPECT_EQ(store_->Query("SELECT jobstateid, succeededitemcount, faileditemcount FROM kx_job"),
              Rows({{"COMPLETE", 6, 0}}));
    EXPECT_EQ(TaskState(task), Value("FAILED"));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM kx_adminhistory WHERE detail LIKE '%COMPLETE%'"), Value(1));
}

TEST_P(WorkCommand, LeavesAJobThatIsCancelledMeanwhile) {
    WriteScriptThatWaitsAtItem3();
    const std::string job = MakeJob("SCRIPT", "QUEUED", 20);
    HostProcess host = Host({"--until-empty", "--lot-limit", "1"});
    WaitUntilItem3();
    SetState(job, "CANCELLED");
    OpenGate();

    EXPECT_EQ(host.ExitStatus(), 0) << host.Err();
    EXPECT_EQ(JobCell(job, "jobstateid"), Value("CANCELLED"));
    EXPECT_EQ(ItemsAt(job, "COMPLETE"), Value(4));
    EXPECT_EQ(ItemsAt(job, ""), Value(16));
}

TEST_P(WorkCommand, PrintsOneJsonObjectALineForPrograms) {
    const std::string job = MakeJob("LIBRARY", "QUEUED", 2);
    std::istringstream lines(OutputOfHost({"--json"}));

    std::vector<std::string> events;
    nlohmann::json last;
    for (std::string line; std::getline(lines, line);) {
        last = nlohmann::json::parse(line);
        events.push_back(last.at("event"));
    }
    EXPECT_THAT(events, testing::ElementsAre("begin", "jobStarted", "jobEnded", "summary"));
    EXPECT_EQ(last.at("succeeded"), 2);
}

TEST_P(WorkCommand, FailsOnAStoreWithoutTables) {
    store_->Execute("DROP TABLE kx_JobItem");
    HostProcess host = Host({});

    EXPECT_EQ(host.ExitStatus(), 1);
    EXPECT_THAT(host.Err(), HasSubstr("[42S02] no such table: kx_JobItem"));
}

TEST_P(WorkCommand, RefusesOptionsThatContradictEachOther) {
    EXPECT_EQ(Host({"--once", "--until-empty"}).ExitStatus(), 2);
    EXPECT_EQ(Host({"--threads", "0"}).ExitStatus(), 2);
}

INSTANTIATE_TEST_SUITE_P(Engines, WorkCommand, testing::Values(SqliteFile()), EngineName);

}  // namespace
}  // namespace kxjob::testing_support

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "apps/insight/insight_store.h"
#include "apps/terminal_process.h"

namespace kxjob {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::Finished;
using testing_support::InsightStore;
using testing_support::RunCommand;
using testing_support::TerminalProcess;

class DoctorCommand : public ::testing::Test {
protected:
    DoctorCommand() { store_.Tables().Execute("DELETE FROM k_JobType WHERE jobtypeid = 'CANNOT'"); }

    /// Runs it with a file for the configuration and one for the drivers.
    Finished Doctor(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "doctor");
        return RunCommand(store_.Folder(), arguments,
                          {{"KXJOB_CONFIG", configuration_},
                           {"ODBCSYSINI", store_.Folder().File("")},
                           {"ODBCINSTINI", "drivers.ini"}});
    }
    Finished DoctorOfStore() { return Doctor({"--connection", store_.Connection(), "--qualifier", "k_"}); }
    /// The sentences of the findings of one number.
    std::vector<std::string> Found(int number) {
        const Finished finished =
            Doctor({"--connection", store_.Connection(), "--qualifier", "k_", "--json"});
        std::vector<std::string> sentences;
        for (const auto& finding : nlohmann::json::parse(finished.out)) {
            if (finding.at("number") == number) sentences.push_back(finding.at("sentence"));
        }
        return sentences;
    }
    void Write(const std::string& file, const std::string& text) {
        std::ofstream(store_.Folder().File(file)) << text;
    }

    InsightStore store_;
    std::string configuration_ = "/dev/null";
};

TEST_F(DoctorCommand, FindsAStoreInOrder) {
    const Finished finished = DoctorOfStore();

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("ok       The store is SQLite 3."));
    EXPECT_THAT(finished.out, HasSubstr("ok       The table k_JobItem is there with all of its columns.\n"));
    EXPECT_THAT(finished.out, HasSubstr("ok       This machine has the component kxTimer_83.Timer of the job "
                                        "type CAN.\n"));
    EXPECT_THAT(finished.out, Not(HasSubstr("warning")));
    EXPECT_THAT(finished.out, Not(HasSubstr("problem")));
    EXPECT_THAT(finished.out, Not(HasSubstr("\033"))) << "nobody watches";
}

TEST_F(DoctorCommand, GivesEachFindingItsNumberNameAndSeverity) {
    const Finished finished = Doctor({"--connection", store_.Connection(), "--qualifier", "k_", "--json"});

    const auto findings = nlohmann::json::parse(finished.out);
    ASSERT_TRUE(findings.is_array());
    const auto engine = std::ranges::find(findings, nlohmann::json(40),
                                          [](const nlohmann::json& finding) { return finding.at("number"); });
    ASSERT_NE(engine, findings.end());
    EXPECT_EQ(engine->at("finding"), "engine");
    EXPECT_EQ(engine->at("severity"), "ok");
}

TEST_F(DoctorCommand, FindsTablesAndColumnsThatAreNotThere) {
    store_.Tables().Execute("ALTER TABLE k_job DROP COLUMN lockduration");
    store_.Tables().Execute("DROP TABLE k_jobtask");
    store_.Tables().Execute("DROP TABLE k_systemflag");

    EXPECT_EQ(DoctorOfStore().exitStatus, 1);
    EXPECT_THAT(Found(51), ElementsAre("The table k_jobtask is not there or may not be read."));
    EXPECT_THAT(Found(52),
                ElementsAre("The column lockduration of the table k_job is not there or may not be "
                            "read."));
    EXPECT_THAT(Found(53), ElementsAre("The table k_systemflag is not there or may not be read."));
}

TEST_F(DoctorCommand, WarnsOfIndexesThatAreNotThereAndKnowsThoseUnderAnotherName) {
    store_.Tables().Execute("DROP INDEX k_job_state");
    store_.Tables().Execute("DROP INDEX k_jobtask_job");
    store_.Tables().Execute("CREATE INDEX mine ON k_jobtask (jobguid, jobtaskstateid, machine)");

    EXPECT_EQ(DoctorOfStore().exitStatus, 0);
    EXPECT_THAT(Found(61), ElementsAre(HasSubstr("The table k_job has no index on jobstateid")));
    EXPECT_THAT(Found(60), Contains("The table k_jobtask has an index on jobguid, jobtaskstateid."));
}

TEST_F(DoctorCommand, WarnsOfComponentsThatThisMachineDoesNotHave) {
    store_.Tables().Execute("UPDATE k_JobType SET notificationprogid = 'No_83.Bell'");

    EXPECT_EQ(DoctorOfStore().exitStatus, 0);
    EXPECT_THAT(Found(81),
                ElementsAre("This machine cannot create the component No_83.Bell of the job type CAN: "
                            "Class not registered: No_83.Bell."));
}

TEST_F(DoctorCommand, FindsJobsWhoseTypeIsNotThere) {
    store_.AddJob("a", "QUEUED", "GONE");
    store_.AddJob("b", "RUNNING", "GONE");
    store_.AddJob("done", "COMPLETE", "LONG GONE");

    EXPECT_EQ(DoctorOfStore().exitStatus, 1);
    EXPECT_THAT(Found(83), ElementsAre(HasSubstr("2 QUEUED or RUNNING jobs are of the type GONE")));
}

TEST_F(DoctorCommand, WarnsOfAStoreWithoutJobTypes) {
    store_.Tables().Execute("DELETE FROM k_JobType");

    EXPECT_EQ(Found(82).size(), 1U);
}

TEST_F(DoctorCommand, NamesTheConfigurationAndTheKeysThatNobodyReads) {
    Write("own.conf", "ADOConnectionString = " + store_.Connection() +
                          "\nNameSpaceQualifier = k_\nlog.levle = 3\ncomponent.A.B.command = /bin/true\n");
    configuration_ = store_.Folder().File("own.conf");

    const Finished finished = Doctor({});

    EXPECT_EQ(finished.exitStatus, 0) << finished.out;
    EXPECT_THAT(finished.out, HasSubstr("The configuration is read from " + configuration_ + ".\n"));
    EXPECT_THAT(Found(12), ElementsAre("The configuration's key log.levle is none that anybody reads."));
}

TEST_F(DoctorCommand, StopsAtAConfigurationThatCannotBeRead) {
    configuration_ = store_.Folder().File("nowhere.conf");

    EXPECT_EQ(DoctorOfStore().exitStatus, 1);
    EXPECT_THAT(Found(13), ElementsAre(HasSubstr("nowhere.conf")));
    EXPECT_THAT(Found(31), ElementsAre());
}

TEST_F(DoctorCommand, WarnsOfDriversThatLetOneThreadInAtATime) {
    Write("drivers.ini", "[One]\nDriver=x.so\nThreading=0\n[Other one]\nthreading = 3\n");

    EXPECT_EQ(DoctorOfStore().exitStatus, 0);
    EXPECT_THAT(Found(20), ElementsAre(HasSubstr("Threading=3 in the section Other one of ")));
}

TEST_F(DoctorCommand, SaysWhenNobodyNamesAStore) {
    const Finished finished = Doctor({});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_THAT(finished.out, HasSubstr("problem  The configuration names no connection"));
}

TEST_F(DoctorCommand, SaysWhyTheStoreCannotBeConnectedToWithoutThePassword) {
    const Finished finished =
        Doctor({"--connection", "Driver={No such driver};Server=nowhere;UID=me;PWD=sekret"});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_THAT(finished.out, HasSubstr("problem  "));
    EXPECT_THAT(finished.out + finished.err, Not(HasSubstr("sekret")));
}

TEST_F(DoctorCommand, RefusesWrongUsage) {
    EXPECT_EQ(Doctor({"--provider", "five"}).exitStatus, 2);
    EXPECT_EQ(Doctor({"me"}).exitStatus, 2);
}

TEST_F(DoctorCommand, ColoursSeveritiesOnATerminalUnlessThatIsUnwanted) {
    const std::vector<std::string> arguments = store_.Arguments({"doctor"});
    TerminalProcess coloured(arguments, {{"KXJOB_CONFIG", "/dev/null"}});
    EXPECT_EQ(coloured.ExitStatus(), 0);
    EXPECT_THAT(coloured.Screen(), HasSubstr("\033[32mok      \033[0m The store is SQLite"));

    TerminalProcess plain(arguments, {{"KXJOB_CONFIG", "/dev/null"}, {"NO_COLOR", "1"}});
    EXPECT_EQ(plain.ExitStatus(), 0);
    EXPECT_THAT(plain.Screen(), HasSubstr("\nok       The store is SQLite"));
    EXPECT_THAT(plain.Screen(), Not(HasSubstr("\033[3")));
}

}  // namespace
}  // namespace kxjob

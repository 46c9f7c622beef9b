#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "apps/command_process.h"
#include "kxjob/array.h"
#include "kxjob/store.h"

namespace kxjob {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::Finished;
using testing_support::RunCommand;
using testing_support::TemporaryFolder;

/// A folder with four files to take, two of known content, and a store beside it.
class DemoCommand : public ::testing::Test {
protected:
    DemoCommand() {
        std::filesystem::create_directories(folder_.Path("files/below"));
        std::ofstream(folder_.File("files/abc")) << "abc";
        std::ofstream(folder_.File("files/empty"));
        std::ofstream(folder_.File("files/below/it's one")) << "x";
        std::ofstream(folder_.File("files/below/\xC3\xA9")) << std::string(200'000, 'y');
        std::ofstream(folder_.File("files/not utf-8 \xFF")) << "z";
    }
    Finished Demo(std::vector<std::string> options) {
        options.insert(options.begin(), {"demo", folder_.File("files"), "--threads", "3"});
        return RunCommand(folder_, options, {{"KXJOB_CONFIG", "/dev/null"}, {"TMPDIR", folder_.File("")}});
    }
    std::vector<std::string> InStore() const { return {"--connection", connection_, "--qualifier", "d_"}; }
    Value Cell(const std::string& sql) { return store_.Query(sql).Rows().Cell(0, 0); }

    TemporaryFolder folder_;
    std::string connection_ = "Driver=SQLite;Database=" + folder_.File("demo.db");
    Store store_{connection_, dspSqlite, "d_"};
};

TEST_F(DemoCommand, TakesAJobTheWholeRoad) {
    const Finished finished = Demo({});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("1 files are left out: their names are no UTF-8 text."));
    EXPECT_THAT(finished.out, HasSubstr("GetNextJob recommends it, with rank 1."));
    EXPECT_THAT(finished.out, HasSubstr("100 %  6 of 6 items, 2 failed"));
    EXPECT_THAT(finished.out, HasSubstr("The job is COMPLETE."));
    EXPECT_THAT(finished.out, HasSubstr("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
    EXPECT_THAT(finished.out, HasSubstr("Is a directory"));
    EXPECT_THAT(finished.out, HasSubstr("it is swept away"));
    EXPECT_THAT(finished.out, Not(HasSubstr("\033"))) << "nobody watches: plain lines only";
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path(""))) {
        EXPECT_THAT(entry.path().filename().string(), Not(HasSubstr("kxjob-demo"))) << "its folder is gone";
    }
}

TEST_F(DemoCommand, LeavesInTheStoreWhatItShows) {
    std::vector<std::string> options = InStore();
    options.emplace_back("--keep");
    const Finished finished = Demo(options);
    ASSERT_EQ(finished.exitStatus, 0) << finished.err;

    EXPECT_EQ(Cell("SELECT jobstateid FROM d_job"), Value("COMPLETE"));
    EXPECT_EQ(Cell("SELECT totalitemcount FROM d_job"), Value(6));
    EXPECT_EQ(Cell("SELECT succeededitemcount FROM d_job"), Value(4));
    EXPECT_EQ(Cell("SELECT faileditemcount FROM d_job"), Value(2));
    EXPECT_EQ(Cell("SELECT nextjobitem FROM d_job"), Value(6));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM d_JobItem WHERE jobitemstateid = 'COMPLETE'"), Value(4));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM d_JobItem WHERE jobitemstateid = 'FAILED' AND failurenote <> ''"),
              Value(2));
    EXPECT_GE(Cell("SELECT COUNT(*) FROM d_jobtask WHERE jobtaskstateid = 'COMPLETE'").ToInt32(), 1);
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM d_jobtask WHERE jobtaskstateid <> 'COMPLETE'"), Value(0));
    EXPECT_EQ(
        Cell("SELECT COUNT(*) FROM d_JobItem, d_jobtask WHERE d_JobItem.jobtaskguid = d_jobtask.jobtaskguid"),
        Value(6));
    EXPECT_EQ(Cell("SELECT failurenote FROM d_JobItem WHERE identifier LIKE '%/empty'"),
              Value("e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"));
}

TEST_F(DemoCommand, SweepsItsJobOutOfAStoreThatStays) {
    const Finished finished = Demo(InStore());
    ASSERT_EQ(finished.exitStatus, 0) << finished.err;

    for (const char* table : {"d_job", "d_JobItem", "d_jobtask"}) {
        EXPECT_EQ(Cell(std::string("SELECT COUNT(*) FROM ") + table), Value(0)) << table;
    }
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM d_adminhistory WHERE actioncode = 'JOB_CREATE'"), Value(1));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM d_adminhistory WHERE actioncode = 'JOB_STATUS_UPDATE'"), Value(4));
    EXPECT_EQ(Cell("SELECT COUNT(*) FROM d_adminhistory WHERE actioncode = 'JOB_REMOVED'"), Value(1));
}

TEST_F(DemoCommand, RefusesAFolderThatIsNotThere) {
    const Finished finished =
        RunCommand(folder_, {"demo", folder_.File("nowhere")}, {{"KXJOB_CONFIG", "/dev/null"}});

    EXPECT_EQ(finished.exitStatus, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("nowhere cannot be read: No such file or directory"));
}

TEST_F(DemoCommand, RefusesAnImpossibleNumberOfThreads) {
    EXPECT_EQ(RunCommand(folder_, {"demo", folder_.File("files"), "--threads", "0"}, {}).exitStatus, 2);
}

TEST_F(DemoCommand, FailsWithTheErrorThatAnotherJobInTheStoreCauses) {
    store_.CreateDatabase();
    store_.CreateTables();
    store_.Execute("INSERT INTO d_job (jobguid, jobtypeid, jobstateid) VALUES ('other', 'OTHER', 'QUEUED')");

    const Finished finished = Demo(InStore());

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_THAT(finished.err, HasSubstr("Unable to find meta data about job type 'OTHER'"));
}

}  // namespace
}  // namespace kxjob

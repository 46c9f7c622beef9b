#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "apps/command_process.h"
#include "kxjob/array.h"
#include "kxjob/store.h"

namespace kxjob {
namespace {

using ::testing::HasSubstr;
using testing_support::Finished;
using testing_support::RunCommand;
using testing_support::TemporaryFolder;

class InitCommand : public ::testing::Test {
protected:
    Finished Init(std::vector<std::string> options) {
        options.insert(options.begin(), "init");
        return RunCommand(folder_, options, {{"KXJOB_CONFIG", configuration_}});
    }
    /// What SQLite says against a script that it runs in the store's file; empty when it runs.
    std::string ScriptError(const std::string& script) const {
        sqlite3* database = nullptr;
        sqlite3_open(folder_.File("new.db").c_str(), &database);
        sqlite3_exec(database, script.c_str(), nullptr, nullptr, nullptr);
        const bool failed = sqlite3_errcode(database) != SQLITE_OK;
        const std::string message = failed ? sqlite3_errmsg(database) : "";
        sqlite3_close(database);
        return message;
    }
    void Configure(const std::string& text) {
        configuration_ = folder_.File("kxjob.conf");
        std::ofstream(configuration_) << text;
    }

    TemporaryFolder folder_;
    std::string configuration_;
    std::string connection_ = "Driver=SQLite;Database=" + folder_.File("new.db");
};

TEST_F(InitCommand, MakesTheFileAndItsTablesAndNamesThem) {
    Configure("");
    const Finished finished = Init({"--connection", connection_, "--qualifier", "kx_", "--json"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    const auto answer = nlohmann::json::parse(finished.out);
    Store store(connection_, dspSqlite, "kx_");
    for (const auto& table : answer.at("tables")) {
        EXPECT_EQ(store.Query("SELECT COUNT(*) FROM " + table.get<std::string>()).Rows().Cell(0, 0),
                  Value(0));
    }
    EXPECT_EQ(answer.at("tables").size(), 8U);
}

TEST_F(InitCommand, LeavesWhatIsThereWhenItRunsAgain) {
    Configure("");
    ASSERT_EQ(Init({"--connection", connection_}).exitStatus, 0);
    Store store(connection_, dspSqlite, "");
    store.Execute("INSERT INTO JobType (jobtypeid) VALUES ('T')");

    const Finished again = Init({"--connection", connection_});

    EXPECT_EQ(again.exitStatus, 0) << again.err;
    EXPECT_THAT(again.out, HasSubstr("  JobItem\n"));
    EXPECT_EQ(store.Query("SELECT jobtypeid FROM JobType").Rows().Cell(0, 0), Value("T"));
}

TEST_F(InitCommand, TakesTheStoreFromTheConfiguration) {
    Configure("ADOConnectionString = " + connection_ + "\nProvider = 5\nNameSpaceQualifier = conf_\n");

    const Finished finished = Init({});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("conf_jobtask"));
}

TEST_F(InitCommand, SaysWhatIsWrongWhenNobodyNamesAStore) {
    Configure("# nothing\n");

    const Finished finished = Init({});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("names no connection"));
}

TEST_F(InitCommand, SaysWhatIsWrongWithAStoreItCannotMake) {
    Configure("");
    const std::string nowhere = "Driver=SQLite;Database=" + folder_.File("no/such/folder/new.db");

    EXPECT_EQ(Init({"--connection", nowhere}).exitStatus, 1);
    EXPECT_EQ(Init({"--connection", connection_, "--provider", "1"}).exitStatus, 1);
    EXPECT_EQ(Init({"--connection", connection_, "--qualifier", "a; DROP"}).exitStatus, 1);
}

TEST_F(InitCommand, PrintsTheStatementsThatMakeTheTablesAndRunsNone) {
    Configure("");

    const Finished finished = Init({"--connection", connection_, "--qualifier", "kx_", "--print-script"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_FALSE(std::filesystem::exists(folder_.File("new.db")));
    Store store(connection_, dspSqlite, "kx_");
    store.CreateDatabase();
    EXPECT_EQ(ScriptError(finished.out), "");
    EXPECT_EQ(store.Query("SELECT COUNT(*) FROM sqlite_schema WHERE type = 'table'").Rows().Cell(0, 0),
              Value(8));
    EXPECT_EQ(store.Query("SELECT COUNT(*) FROM kx_subsystem").Rows().Cell(0, 0), Value(0));
}

TEST_F(InitCommand, PrintsTheStatementsOfAProviderWithoutAStore) {
    Configure("# nothing\n");

    const Finished finished = Init({"--provider", "2", "--qualifier", "dbo.kx_", "--print-script"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    for (const char* table : {"job", "JobItem", "jobtask", "JobType", "systemflag", "adminhistory",
                              "applicationstate", "subsystem"}) {
        EXPECT_THAT(finished.out, HasSubstr("CREATE TABLE dbo.kx_" + std::string(table) + " ("));
    }
}

TEST_F(InitCommand, PrintsNoStatementsOfAProviderWithoutAny) {
    Configure("");

    const Finished finished = Init({"--provider", "1", "--print-script"});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_EQ(finished.out, "");
}

TEST_F(InitCommand, RefusesWrongUsage) {
    EXPECT_EQ(Init({"--connection", connection_, "--print-script", "--json"}).exitStatus, 2);
    EXPECT_EQ(Init({"--provider", "five"}).exitStatus, 2);
    EXPECT_EQ(Init({"--nonsense"}).exitStatus, 2);
}

}  // namespace
}  // namespace kxjob

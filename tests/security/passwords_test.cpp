#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "apps/command_process.h"
#include "contract/contract_engine.h"
#include "defaults/store/connection_string.h"
#include "files/temporary_folder.h"
#include "seeded/seeded_store.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* kMarker = "zebra-4711";

/// Every sub-command that a store is needed for, once with sound arguments.
std::vector<std::vector<std::string>> EverySubCommand(const TemporaryFolder& folder,
                                                      const std::string& connection) {
    const std::string job = kJobGuid;
    return {{"init"},
            {"type", "list"},
            {"type", "add", "OTHER", "--component", "kxTimer_83.Timer"},
            {"create", "--type", kJobType, "one"},
            {"list"},
            {"list", "--json"},
            {"show", job},
            {"items", job},
            {"item", kItemGuid},
            {"set-state", job, "COMPLETE", "--yes"},
            {"note", job, "a note"},
            {"tasks"},
            {"why", job},
            {"watch", job, "--json"},
            {"stats"},
            {"history"},
            {"doctor"},
            {"doctor", "--json"},
            {"sweep", "--yes"},
            {"remove", job, "--yes"},
            {"work", "--until-empty", "--type", "OTHER"},
            {"demo", folder.File("files")},
            {"demo", folder.File("files"), "--keep", "--connection", connection, "--qualifier", "demo_"},
            {"call", "GetJobTasks", "--ConnectionString", "", "--Provider", "5", "--NameQualifier", "",
             "--explain", folder.File("journal")}};
}

/// The names of the sub-commands that the help shows.
std::set<std::string> ShownSubCommands(const TemporaryFolder& folder) {
    std::set<std::string> names;
    std::istringstream help(RunCommand(folder, {"--help"}, {}).out);
    for (std::string line; std::getline(help, line);) {
        if (!line.starts_with("  ") || line[2] == ' ' || line[2] == '-') continue;
        names.insert(line.substr(2, line.find(' ', 2) - 2));
    }
    return names;
}

/// A folder with a configuration that tells the log everything, in which commands run.
class Passwords : public testing::Test {
protected:
    Finished Run(const std::vector<std::string>& arguments) const {
        return RunCommand(folder_, arguments, {{"KXJOB_CONFIG", folder_.File("kxjob.conf")}});
    }

    void Configure(const std::string& connection) const {
        std::ofstream(folder_.File("kxjob.conf"))
            << "ADOConnectionString = " << connection
            << "\nProvider = 5\nNameSpaceQualifier = app_\nlog.level = 4\nlog.file = " << folder_.File("log")
            << "\n";
    }

    /// Runs every sub-command, and looks for the password in all that they leave. Gives back how many were
    /// done.
    int DoneWithoutTelling(const std::string& connection) const {
        Configure(connection);
        std::filesystem::create_directory(folder_.Path("files"));
        std::ofstream(folder_.Path("files") / "one") << "a file";
        int done = 0;
        for (const std::vector<std::string>& arguments : EverySubCommand(folder_, connection)) {
            const Finished finished = Run(arguments);
            EXPECT_THAT(finished.out + finished.err, Not(HasSubstr(kMarker))) << arguments[0];
            EXPECT_NE(finished.exitStatus, 2) << arguments[0] << ": " << finished.err;
            done += finished.exitStatus == 0 ? 1 : 0;
        }
        EXPECT_THAT(ContentOf(folder_.File("log")), Not(HasSubstr(kMarker)));
        EXPECT_FALSE(ContentOf(folder_.File("log")).empty());
        EXPECT_THAT(ContentOf(folder_.File("journal")), Not(HasSubstr(kMarker)));
        EXPECT_THAT(ContentOf(folder_.File("journal")), HasSubstr("=***"));
        return done;
    }

    TemporaryFolder folder_;
};

TEST_F(Passwords, AreLookedForInEverySubCommand) {
    std::set<std::string> tried{"completion"};  // needs no store
    for (const std::vector<std::string>& arguments : EverySubCommand(folder_, "")) {
        tried.insert(arguments[0]);
    }
    EXPECT_EQ(ShownSubCommands(folder_), tried);
}

TEST_F(Passwords, AppearNowhereWhenAllGoesWell) {
    // The embedded engine takes no password and passes over the key.
    const std::string connection = "Driver=SQLite;Database=" + folder_.File("store.db") + ";PWD=" + kMarker;
    SeedStore(connection, "app_");
    EXPECT_GT(DoneWithoutTelling(connection), 20);
}

TEST_F(Passwords, AppearNowhereWhenNothingConnects) {
    const std::string secret = std::string("UID=kx;PWD=") + kMarker;
    DoneWithoutTelling("Driver={No such driver};Server=127.0.0.1;" + secret);
    DoneWithoutTelling("DSN=no such source;" + secret);
    DoneWithoutTelling("Driver={SQLite3};Database=/no/such/folder/file;" + secret);
    // No entry of a driver: nothing is known to be a password in it, and nothing of it is shown.
    DoneWithoutTelling(secret + ";stray");
    DoneWithoutTelling("PWD={" + std::string(kMarker));
}

TEST_F(Passwords, AppearNotInSentencesAboutWrongUsage) {
    const std::string connection = std::string("Driver=x;PWD=") + kMarker;
    const std::vector<std::vector<std::string>> wrong{
        {"list", "--conection", connection},
        {"list", connection},
        {"list", "--connection", "Driver=x;PWD=my", kMarker},
        {"list", "--provider", connection},
        {"list", "--provider=" + connection},
        {"work", "--connection", connection, "--type"},
        {"call", "GetNextJob", "--Connection", connection},
        {"call", "GetNextJob", connection},
        {"call", "GetNextJob", "--ConnectionString", connection, "--Provider", connection},
        {connection},
        {"list " + connection},
        {"demo", "--limit", connection},
        {"completion", connection}};
    for (const std::vector<std::string>& arguments : wrong) {
        const Finished finished = Run(arguments);
        EXPECT_NE(finished.exitStatus, 0) << arguments[0];
        EXPECT_NE(finished.err + finished.out, "");
        EXPECT_THAT(finished.out + finished.err, Not(HasSubstr(kMarker)));
    }
}

/// What other users see of a host that runs with these options.
std::string CommandLineOfAHost(const TemporaryFolder& folder, const std::vector<std::string>& options) {
    std::vector<std::string> arguments{"work"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const pid_t host = StartCommand(arguments, {{"KXJOB_CONFIG", folder.File("kxjob.conf")}},
                                    {folder.File("out"), folder.File("err")});
    std::string line;
    for (int look = 0; look < 100'000 && line.empty(); ++look) {  // empty until the program is in place
        line = ContentOf("/proc/" + std::to_string(host) + "/cmdline");
    }
    kill(host, SIGKILL);
    WaitForEnd(host);
    return line;
}

TEST_F(Passwords, AreInTheCommandLineOnlyIfGivenThere) {
    const std::string connection = "Driver=SQLite;Database=" + folder_.File("store.db") + ";PWD=" + kMarker;
    SeedStore(connection, "app_");
    Configure(connection);
    const std::string byConfiguration = CommandLineOfAHost(folder_, {});
    EXPECT_THAT(byConfiguration, HasSubstr("work"));
    EXPECT_THAT(byConfiguration, Not(HasSubstr(kMarker)));
    EXPECT_THAT(CommandLineOfAHost(folder_, {"--connection", connection, "--qualifier", "app_"}),
                HasSubstr(kMarker));
}

class PasswordsOnAServer : public Passwords, public testing::WithParamInterface<ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
        store_ = GetParam().makeStore();
    }

    /// The server's connection string with other values.
    std::string With(const std::string& changedKey, const std::string& changed) const {
        std::string text;
        const std::string own = store_->ConnectionString();
        const ConnectionString connection(own);
        for (const auto& [key, value] : connection.Entries()) {
            const std::string& now = key == "pwd"        ? std::string(kMarker)
                                     : key == changedKey ? changed
                                                         : value;
            text += key + "=" + (key == "driver" ? "{" + now + "}" : now) + ";";
        }
        return text;
    }

    std::unique_ptr<ContractStore> store_;
};

TEST_P(PasswordsOnAServer, AppearNowhereWhenTheyAreWrong) {
    EXPECT_LE(DoneWithoutTelling(With("", "")), 1) << "only the demo has a store of its own";
    EXPECT_LE(DoneWithoutTelling(With("port", "1")), 1);
}

INSTANTIATE_TEST_SUITE_P(Engines, PasswordsOnAServer, testing::Values(PostgreSqlServer(), MariaDbServer()),
                         EngineName);

}  // namespace
}  // namespace kxjob::testing_support

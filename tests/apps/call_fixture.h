#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "apps/command_process.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/store.h"
#include "method_table.h"
#include "value_json.h"

namespace kxjob::command {

inline constexpr const char* kJob = "{11111111-1111-4111-8111-111111111111}";
inline constexpr const char* kState = "{22222222-2222-4222-8222-222222222222}";
inline constexpr const char* kItem = "{33333333-3333-4333-8333-333333333333}";

using Named = std::vector<std::pair<std::string, std::string>>;

/// The command, each time as a process of its own.
class CallCommand : public testing::Test {
protected:
    CallCommand() { Configure(""); }

    testing_support::Finished Run(const std::vector<std::string>& arguments) {
        return testing_support::RunCommand(folder, arguments, {{"KXJOB_CONFIG", folder.File("kxjob.conf")}});
    }
    void Configure(const std::string& document) { std::ofstream(folder.File("kxjob.conf")) << document; }

    /// `kxjob call`, each argument as "--Name value".
    testing_support::Finished Call(const std::string& method, const Named& arguments) {
        std::vector<std::string> all{"call", method};
        for (const auto& [name, value] : arguments) {
            all.push_back("--" + name);
            all.push_back(value);
        }
        return Run(all);
    }

    testing_support::TemporaryFolder folder;
};

/// The same with a store of its own.
class CallOnStore : public CallCommand {
protected:
    CallOnStore() {
        store.CreateDatabase();
        store.CreateTables();
        store.Execute(
            "INSERT INTO kx_JobType (jobtypeid, description, implprogid, notificationprogid)"
            " VALUES ('IMPORT', 'Import of files', 'DebugTools_83.Helper', '')");
    }

    /// Adds those of the three connection arguments that the method has.
    testing_support::Finished CallStore(const std::string& method, Named arguments = {}) {
        const std::map<std::string, std::string> connected{{"ConnectionString", connection},
                                                           {"Provider", "5"},
                                                           {"NameQualifier", "kx_"},
                                                           {"NameQualfier", "kx_"}};
        for (const MethodArgument& argument : FindMethod(method)->arguments) {
            const auto found = connected.find(argument.name);
            if (found != connected.end()) arguments.push_back(*found);
        }
        called.insert(method);
        return Call(method, arguments);
    }
    /// The same; gives the answer of a call that must succeed.
    std::string AnswerOf(const std::string& method, const Named& arguments = {}) {
        const testing_support::Finished finished = CallStore(method, arguments);
        EXPECT_EQ(finished.exitStatus, 0) << method << ": " << finished.out << finished.err;
        return finished.out;
    }
    /// The text in {"result":"text"}.
    std::string TextOf(const std::string& answer) {
        return Json::parse(answer).at("result").get<std::string>();
    }
    void CreateJob(const std::string& description = "a job") {
        ASSERT_EQ(AnswerOf("CreateJob", {{"GUID", kJob},
                                         {"JobTypeID", "IMPORT"},
                                         {"Description", description},
                                         {"ApplicationStateGUID", kState},
                                         {"Parameters", "<parameters/>"},
                                         {"TotalItemCount", "3"}}),
                  "{}\n");
    }

    std::string connection = "Driver=SQLite;Database=" + folder.File("jobs.db");
    Store store{connection, dspSqlite, "kx_"};
    std::set<std::string> called;
};

}  // namespace kxjob::command

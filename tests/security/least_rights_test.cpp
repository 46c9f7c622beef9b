#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "apps/command_process.h"
#include "contract/contract_engine.h"
#include "defaults/store/connection_string.h"
#include "files/temporary_folder.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "kxjob/store.h"
#include "security/security_page.h"
#include "seeded/seeded_store.h"
#include "support/every_method.h"

namespace kxjob::testing_support {
namespace {

using testing::AnyOf;
using testing::HasSubstr;

constexpr const char* kUser = "kx_limited";
constexpr const char* kPassword = "limited";

/// A right that the page grants: INSERT, and the table's base name.
struct Right {
    std::string verb;
    std::string table;
};

/// The rights of the page's block for this engine: every statement of it begins with GRANT.
std::vector<std::string> Grants(const std::string& engine) {
    std::vector<std::string> grants;
    for (const std::string& line : CodeBlockOf(SecurityPage(), engine)) {
        if (line.starts_with("GRANT ")) grants.push_back(line);
    }
    return grants;
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// A store that its owner has made and filled, and a user who has the rights of SECURITY.md and no others.
class LeastRights : public testing::TestWithParam<ContractEngine> {
protected:
    void SetUp() override {
        if (!GetParam().whyMissing.empty()) GTEST_SKIP() << GetParam().whyMissing;
        store_ = GetParam().makeStore();
        owner_ = std::make_unique<Store>(store_->ConnectionString(), GetParam().provider, "app_");
        SeedStore(store_->ConnectionString(), "app_", GetParam().provider);
        owner_->Execute(IsPostgreSql() ? std::string("CREATE ROLE kx_limited LOGIN PASSWORD 'limited'")
                                       : "CREATE USER kx_limited@'127.0.0.1' IDENTIFIED BY 'limited'");
        hasUser_ = true;
        const std::vector<std::string> grants = Grants(IsPostgreSql() ? "PostgreSQL" : "MariaDB");
        ASSERT_FALSE(grants.empty());
        for (const std::string& grant : grants) owner_->Execute(OnThisStore(grant));
        limited_ = AsLimitedUser(store_->ConnectionString());
    }
    void TearDown() override {
        if (!hasUser_) return;
        if (IsPostgreSql()) owner_->Execute("DROP OWNED BY kx_limited");
        owner_->Execute(IsPostgreSql() ? "DROP ROLE kx_limited" : "DROP USER kx_limited@'127.0.0.1'");
    }

    bool IsPostgreSql() const { return GetParam().engineName == "PostgreSQL"; }

    /// The page's names for user, database and the end of a statement, as they are here.
    std::string OnThisStore(std::string statement) const {
        const std::string database(ConnectionString(store_->ConnectionString()).Value("database"));
        statement = Replaced(std::move(statement), "jobs.app_", database + ".app_");
        statement = Replaced(std::move(statement), "'worker'@'%'", "kx_limited@'127.0.0.1'");
        statement = Replaced(std::move(statement), "worker;", std::string(kUser) + ";");
        if (statement.ends_with(';')) statement.pop_back();
        return statement;
    }

    static std::string AsLimitedUser(const std::string& text) {
        std::string limited;
        const ConnectionString connection(text);
        for (const auto& [key, value] : connection.Entries()) {
            const std::string own = key == "uid" ? kUser : key == "pwd" ? kPassword : value;
            limited += key + "=" + (key == "driver" ? "{" + own + "}" : own) + ";";
        }
        return limited;
    }

    void FillAgain() {
        for (const char* table : {"job", "JobItem", "jobtask", "JobType", "systemflag", "adminhistory",
                                  "applicationstate", "subsystem"}) {
            owner_->Execute("DELETE FROM " + owner_->Table(table));
        }
        SeedStore(store_->ConnectionString(), "app_", GetParam().provider);
    }

    /// The error of a method called by the limited user; empty when there is none.
    std::string ErrorOfMethod(const std::string& name) {
        const auto& methods = EveryMethod();
        const auto method = std::find_if(methods.begin(), methods.end(),
                                         [&](const MethodCall& one) { return one.name == name; });
        JobHelper helper;
        try {
            method->call(helper, limited_, GetParam().provider, "app_");
        } catch (const AutomationError& error) {
            return std::to_string(error.Number() - static_cast<std::int32_t>(kObjectErrorBase)) + " " +
                   error.Description();
        }
        return {};
    }

    void Change(const std::string& verb, const Right& right, const std::string& preposition) {
        owner_->Execute(verb + " " + right.verb + " ON " + owner_->Table(right.table) + " " + preposition +
                        " " + (IsPostgreSql() ? kUser : "kx_limited@'127.0.0.1'"));
    }

    Finished RunLimited(const std::vector<std::string>& arguments) const {
        std::ofstream(folder_.File("kxjob.conf"))
            << "ADOConnectionString = " << limited_ << "\nProvider = " << GetParam().provider
            << "\nNameSpaceQualifier = app_\ncomponent.Rights_83.Cat.command = /bin/cat\n";
        return RunCommand(folder_, arguments, {{"KXJOB_CONFIG", folder_.File("kxjob.conf")}});
    }

    TemporaryFolder folder_;
    std::unique_ptr<ContractStore> store_;
    std::unique_ptr<Store> owner_;
    std::string limited_;
    bool hasUser_ = false;
};

TEST_P(LeastRights, AreEnoughForEveryMethod) {
    for (const MethodCall& method : EveryMethod()) {
        FillAgain();
        EXPECT_EQ(ErrorOfMethod(method.name), "") << method.name;
    }
    EXPECT_EQ(EveryMethod().size(), 35U);
}

TEST_P(LeastRights, AreEnoughForAWorkerHostAndTheDoctor) {
    owner_->Execute("DELETE FROM " + owner_->Table("job"));
    owner_->Execute("UPDATE " + owner_->Table("JobType") + " SET implprogid = 'Rights_83.Cat'");

    const Finished created = RunLimited({"create", "--type", kJobType, "one", "two"});
    EXPECT_EQ(created.exitStatus, 0) << created.err;
    const Finished worked = RunLimited({"work", "--until-empty", "--threads", "2"});
    EXPECT_EQ(worked.exitStatus, 0) << worked.err;
    EXPECT_EQ(
        owner_->Query("SELECT COUNT(*) FROM app_job WHERE jobstateid = 'COMPLETE' AND succeededitemcount = 2")
            .Rows()
            .Cell(0, 0)
            .ToDouble(),
        1);
    const Finished examined = RunLimited({"doctor"});
    EXPECT_EQ(examined.exitStatus, 0) << examined.out;
    const Finished history = RunLimited({"history"});
    EXPECT_EQ(history.exitStatus, 0) << history.err;
}

TEST_P(LeastRights, AreNotEnoughToMakeOrRemoveTables) {
    const Finished made = RunLimited({"init", "--connection", limited_, "--provider",
                                      std::to_string(GetParam().provider), "--qualifier", "other_"});
    EXPECT_EQ(made.exitStatus, 1);
    EXPECT_THAT(made.err, AnyOf(HasSubstr("denied"), HasSubstr("must be owner")));
    Store limited(limited_, GetParam().provider, "app_");
    EXPECT_THROW(limited.Execute("DROP TABLE app_job"), AutomationError);
}

/// Each right that is granted, and a method that needs it.
const std::vector<std::pair<Right, const char*>>& NeededRights() {
    static const std::vector<std::pair<Right, const char*>> rights{
        {{"SELECT", "job"}, "GetJob"},
        {{"INSERT", "job"}, "CreateJob"},
        {{"UPDATE", "job"}, "UpdateJobStatus"},
        {{"DELETE", "job"}, "RemoveJobAndItems"},
        {{"SELECT", "JobItem"}, "GetJobItems"},
        {{"INSERT", "JobItem"}, "CreateJobItem"},
        {{"UPDATE", "JobItem"}, "UpdateJobItemStatus"},
        {{"DELETE", "JobItem"}, "RemoveJobAndItems"},
        {{"SELECT", "jobtask"}, "GetJobTasks"},
        {{"INSERT", "jobtask"}, "RegisterJobTask"},
        {{"UPDATE", "jobtask"}, "UpdateTaskRegistration"},
        {{"DELETE", "jobtask"}, "RemoveJobAndItems"},
        {{"SELECT", "JobType"}, "GetJobType"},
        {{"INSERT", "adminhistory"}, "CreateJob"},
        {{"SELECT", "applicationstate"}, "RemoveIrrelevantJobsInAllContainers"},
        {{"SELECT", "subsystem"}, "CreateJob"},
        {{"SELECT", "systemflag"}, "CreateJob"},
    };
    return rights;
}

TEST_P(LeastRights, AreAllNeeded) {
    for (const auto& [right, method] : NeededRights()) {
        SCOPED_TRACE(right.verb + " on " + right.table);
        FillAgain();
        Change("REVOKE", right, "FROM");
        EXPECT_THAT(ErrorOfMethod(method), AnyOf(HasSubstr("703 [42501] "), HasSubstr("703 [42000] ")))
            << method;
        Change("GRANT", right, "TO");
        EXPECT_EQ(ErrorOfMethod(method), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, LeastRights, testing::Values(PostgreSqlServer(), MariaDbServer()),
                         EngineName);

}  // namespace
}  // namespace kxjob::testing_support

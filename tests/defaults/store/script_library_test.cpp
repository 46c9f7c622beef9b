#include "defaults/store/script_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <vector>

#include "defaults/store/create_database_file.h"
#include "defaults/store/script_statements.h"
#include "defaults/store/script_text.h"
#include "defaults/store/sqlite/sqlite_session.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/array.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing_support::ErrorOf;
using testing_support::kUnknownScript;
using testing_support::Script;
using testing_support::TemporaryDatabase;

std::string WhyRefused(DataStoreProvider provider, const std::string& scriptName) {
    const AutomationError error = ErrorOf([&] { Script(provider, "", scriptName); });
    EXPECT_EQ(error.Number(), kUnknownScript);
    EXPECT_EQ(error.Source(), "kxJob.ScriptLibrary");
    return error.Description();
}

std::vector<std::string> FirstColumn(const Value& rows) {
    std::vector<std::string> texts;
    for (std::int32_t row = 0; row < rows.Rows().Rows(); ++row)
        texts.push_back(rows.Rows().Cell(0, row).ToText());
    return texts;
}

/// Each runs the scripts of SQLite under one qualifier; `schema` is where the tables must be, `prefix` what
/// their names must begin with.
struct Qualifier {
    const char* name;
    const char* text;
    const char* schema;
    const char* prefix;
};

void PrintTo(const Qualifier& qualifier, std::ostream* out) {
    *out << qualifier.text;
}

class SqliteScriptsTest : public testing::TestWithParam<Qualifier> {
protected:
    SqliteScriptsTest() {
        const std::string attached = database_.Folder().Path("attached.db").string();
        CreateDatabaseFile("Driver=SQLite;Database=" + attached);
        session_.Execute("ATTACH '" + attached + "' AS \"my q.\"");
    }
    void Run(const std::string& script) {
        for (const std::string& statement : ScriptStatements(script)) session_.Execute(statement);
    }
    std::vector<std::string> Names(const std::string& type) {
        const std::string schema = '"' + std::string(GetParam().schema) + '"';
        return FirstColumn(session_.Query(
            "SELECT substr(name, " + std::to_string(std::string(GetParam().prefix).size() + 1) + ") FROM " +
            schema + ".sqlite_schema WHERE type = '" + type + "' AND name LIKE '" + GetParam().prefix +
            "%' AND sql IS NOT NULL ORDER BY name"));
    }
    std::vector<std::string> Columns(const std::string& table) {
        return FirstColumn(session_.Query("SELECT name || ' ' || type FROM pragma_table_info('" +
                                          std::string(GetParam().prefix) + table + "', '" +
                                          GetParam().schema + "') ORDER BY cid"));
    }

    TemporaryDatabase database_;
    SqliteSession session_{database_.File()};
};

TEST_P(SqliteScriptsTest, MakeTheJobTablesWithTheirColumns) {
    Run(Script(5, GetParam().text, "JobTablesDDL"));

    EXPECT_THAT(Names("table"), ElementsAre("JobItem", "JobType", "job", "jobtask"));
    EXPECT_THAT(Columns("job"),
                ElementsAre("jobguid TEXT", "jobtypeid TEXT", "description TEXT", "parameters TEXT",
                            "appstateguid TEXT", "jobstateid TEXT", "nextjobitem INTEGER",
                            "totalitemcount INTEGER", "succeededitemcount INTEGER", "faileditemcount INTEGER",
                            "startdt TEXT", "lastcompletiondt TEXT", "sumoftimeincsq REAL",
                            "failurenote TEXT", "jobeditorlockguid TEXT", "lockduration REAL"));
    EXPECT_THAT(Columns("JobItem"),
                ElementsAre("jobitemguid TEXT", "jobguid TEXT", "identifier TEXT", "sequence INTEGER",
                            "data TEXT", "jobitemstateid TEXT", "startdt TEXT", "enddt TEXT",
                            "failurenote TEXT", "jobtaskguid TEXT"));
    EXPECT_THAT(
        Columns("jobtask"),
        ElementsAre("jobtaskguid TEXT", "description TEXT", "jobguid TEXT", "usercontext TEXT",
                    "machine TEXT", "processid INTEGER", "threadid INTEGER", "startdt TEXT", "enddt TEXT",
                    "jobtaskstateid TEXT", "lastjobitem TEXT", "command TEXT", "lockguid TEXT"));
    EXPECT_THAT(Columns("JobType"), ElementsAre("jobtypeid TEXT", "description TEXT", "implprogid TEXT",
                                                "notificationprogid TEXT"));
}

TEST_P(SqliteScriptsTest, MakeTheIndexesOfTheJobTables) {
    Run(Script(5, GetParam().text, "JobTablesDDL"));

    EXPECT_THAT(Names("index"), ElementsAre("job_state", "job_type", "jobitem_job", "jobtask_job"));
}

TEST_P(SqliteScriptsTest, MakeTheStandInTables) {
    Run(Script(5, GetParam().text, "StandInTablesDDL"));

    EXPECT_THAT(Names("table"), ElementsAre("adminhistory", "applicationstate", "subsystem", "systemflag"));
    EXPECT_THAT(Columns("systemflag"), ElementsAre("flagname TEXT", "flagvalue TEXT"));
    EXPECT_THAT(Columns("adminhistory"), ElementsAre("historyid TEXT", "writtendt TEXT", "actioncode TEXT",
                                                     "detail TEXT", "usercontext TEXT"));
    EXPECT_THAT(Columns("applicationstate"), ElementsAre("stateid TEXT", "stateguid TEXT"));
    EXPECT_THAT(Columns("subsystem"), ElementsAre("subsystemid TEXT"));
}

TEST_P(SqliteScriptsTest, MayRunTwice) {
    for (const char* name : {"JobTablesDDL", "StandInTablesDDL"}) {
        Run(Script(5, GetParam().text, name));
        EXPECT_NO_THROW(Run(Script(5, GetParam().text, name))) << name;
    }
    EXPECT_EQ(Names("table").size(), 8U);
}

TEST_P(SqliteScriptsTest, LeaveOutTheIndexesWhenNotComplete) {
    Run(Script(5, GetParam().text, "JobTablesDDL", false));

    EXPECT_EQ(Names("table").size(), 4U);
    EXPECT_TRUE(session_
                    .Query("SELECT 1 FROM \"" + std::string(GetParam().schema) +
                           "\".sqlite_schema WHERE type = 'index' AND sql IS NOT NULL")
                    .IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Qualifiers, SqliteScriptsTest,
    testing::Values(Qualifier{"None", "", "main", ""}, Qualifier{"Prefix", "kx_", "main", "kx_"},
                    Qualifier{"Schema", "main.", "main", ""},
                    Qualifier{"SchemaAndPrefix", "main.app_", "main", "app_"},
                    Qualifier{"QuotedSchema", "\"my q.\".", "my q.", ""},
                    Qualifier{"QuotedSchemaAndPrefix", "\"my q.\".app_", "my q.", "app_"},
                    Qualifier{"BracketedSchemaAndPrefix", "[my q.].app_", "my q.", "app_"},
                    Qualifier{"BackQuotedSchema", "`my q.`.", "my q.", ""}),
    [](const testing::TestParamInfo<Qualifier>& qualifier) { return qualifier.param.name; });

TEST(StoreScriptLibrary, PutsTheQualifierInFrontOfTablesAndIndexes) {
    const std::string plain = Script(5, "kx_", "JobTablesDDL");
    EXPECT_THAT(plain, HasSubstr("CREATE TABLE IF NOT EXISTS kx_job ("));
    EXPECT_THAT(plain,
                HasSubstr("CREATE INDEX IF NOT EXISTS kx_job_type ON kx_job (jobtypeid, appstateguid);\n"));

    const std::string inSchema = Script(5, "main.app_", "JobTablesDDL");
    EXPECT_THAT(inSchema, HasSubstr("CREATE TABLE IF NOT EXISTS main.app_JobItem ("));
    EXPECT_THAT(inSchema,
                HasSubstr("CREATE INDEX IF NOT EXISTS main.app_jobitem_job ON app_JobItem (jobguid, "
                          "sequence);\n"));
}

TEST(StoreScriptLibrary, EndsEveryScriptWithASemicolonAndALineBreak) {
    EXPECT_THAT(Script(5, "", "JobTablesDDL"), EndsWith(";\n"));
    EXPECT_THAT(Script(5, "", "StandInTablesDDL"), EndsWith(";\n"));
}

TEST(StoreScriptLibrary, LeavesNoPlaceholderBehind) {
    EXPECT_THAT(Script(5, "", "JobTablesDDL"), Not(HasSubstr("%")));
    EXPECT_THAT(Script(5, "", "StandInTablesDDL"), Not(HasSubstr("%")));
}

TEST(StoreScriptLibrary, HasNoScriptsForOtherProviders) {
    EXPECT_EQ(WhyRefused(1, "JobTablesDDL"), "The data store provider 1 is reserved and not supported");
    EXPECT_EQ(WhyRefused(0, "JobTablesDDL"), "The data store provider 0 is unknown");
    EXPECT_EQ(WhyRefused(-7, "JobTablesDDL"), "The data store provider -7 is unknown");
}

TEST(StoreScriptLibrary, HasNoScriptsOfOtherNames) {
    EXPECT_EQ(WhyRefused(5, "jobtablesddl"), "There is no script named \"jobtablesddl\"");
    EXPECT_EQ(WhyRefused(5, ""), "There is no script named \"\"");
}

}  // namespace
}  // namespace kxjob

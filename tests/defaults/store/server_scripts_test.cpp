#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "defaults/store/script_library.h"
#include "defaults/store/script_text.h"

// What the scripts say to database servers. That the servers understand it, tests/contract shows.
namespace kxjob {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing_support::Script;

TEST(PostgreSqlScript, MakesTheJobTablesAndTheirIndexes) {
    EXPECT_EQ(Script(dspPostgreSql, "kx.app_", "JobTablesDDL"),
              R"(SELECT pg_advisory_xact_lock(83001);
CREATE TABLE IF NOT EXISTS kx.app_job (
    jobguid varchar(64) COLLATE "C" NOT NULL PRIMARY KEY, jobtypeid varchar(255) COLLATE "C", description text, parameters text,
    appstateguid varchar(64) COLLATE "C", jobstateid varchar(64) COLLATE "C", nextjobitem integer DEFAULT 0,
    totalitemcount integer DEFAULT 0, succeededitemcount integer DEFAULT 0,
    faileditemcount integer DEFAULT 0, startdt varchar(32), lastcompletiondt varchar(32),
    sumoftimeincsq double precision DEFAULT 0, failurenote text, jobeditorlockguid varchar(64) COLLATE "C", lockduration double precision);
CREATE TABLE IF NOT EXISTS kx.app_JobItem (
    jobitemguid varchar(64) COLLATE "C" NOT NULL PRIMARY KEY, jobguid varchar(64) COLLATE "C" NOT NULL, identifier text,
    sequence integer NOT NULL, data text, jobitemstateid varchar(64) COLLATE "C", startdt varchar(32), enddt varchar(32),
    failurenote text, jobtaskguid varchar(64) COLLATE "C") WITH (fillfactor = 30);
CREATE TABLE IF NOT EXISTS kx.app_jobtask (
    jobtaskguid varchar(64) COLLATE "C" NOT NULL PRIMARY KEY, description text, jobguid varchar(64) COLLATE "C", usercontext text,
    machine text, processid integer, threadid integer, startdt varchar(32), enddt varchar(32),
    jobtaskstateid varchar(64) COLLATE "C", lastjobitem text, command text, lockguid varchar(64) COLLATE "C");
CREATE TABLE IF NOT EXISTS kx.app_JobType (
    jobtypeid varchar(255) COLLATE "C" NOT NULL PRIMARY KEY, description text, implprogid text, notificationprogid text);
CREATE INDEX IF NOT EXISTS app_job_type ON kx.app_job (jobtypeid, appstateguid);
CREATE INDEX IF NOT EXISTS app_job_state ON kx.app_job (jobstateid);
CREATE INDEX IF NOT EXISTS app_jobitem_job ON kx.app_JobItem (jobguid, sequence);
CREATE INDEX IF NOT EXISTS app_jobtask_job ON kx.app_jobtask (jobguid, jobtaskstateid);
)");
}

TEST(MariaDbScript, MakesTheJobTablesAndTheirIndexes) {
    EXPECT_EQ(Script(dspMariaDb, "kx.app_", "JobTablesDDL"),
              R"(CREATE TABLE IF NOT EXISTS kx.app_job (
    jobguid varchar(64) NOT NULL PRIMARY KEY, jobtypeid varchar(255), description longtext, parameters longtext,
    appstateguid varchar(64), jobstateid varchar(64), nextjobitem integer DEFAULT 0,
    totalitemcount integer DEFAULT 0, succeededitemcount integer DEFAULT 0,
    faileditemcount integer DEFAULT 0, startdt varchar(32), lastcompletiondt varchar(32),
    sumoftimeincsq double DEFAULT 0, failurenote longtext, jobeditorlockguid varchar(64), lockduration double,
    KEY job_type (jobtypeid, appstateguid),
    KEY job_state (jobstateid)) ENGINE=InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_nopad_bin;
CREATE TABLE IF NOT EXISTS kx.app_JobItem (
    jobitemguid varchar(64) NOT NULL, jobguid varchar(64) NOT NULL, identifier varchar(255),
    sequence integer NOT NULL, data longtext, jobitemstateid varchar(64), startdt varchar(32), enddt varchar(32),
    failurenote longtext, jobtaskguid varchar(64),
    PRIMARY KEY (jobguid, sequence, jobitemguid), UNIQUE KEY jobitem_key (jobitemguid)) ENGINE=InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_nopad_bin;
CREATE TABLE IF NOT EXISTS kx.app_jobtask (
    jobtaskguid varchar(64) NOT NULL PRIMARY KEY, description longtext, jobguid varchar(64), usercontext longtext,
    machine varchar(255), processid integer, threadid integer, startdt varchar(32), enddt varchar(32),
    jobtaskstateid varchar(64), lastjobitem longtext, command longtext, lockguid varchar(64),
    KEY jobtask_job (jobguid, jobtaskstateid)) ENGINE=InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_nopad_bin;
CREATE TABLE IF NOT EXISTS kx.app_JobType (
    jobtypeid varchar(255) NOT NULL PRIMARY KEY, description longtext, implprogid varchar(255), notificationprogid varchar(255)) ENGINE=InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_nopad_bin;
)");
}

TEST(SqlServerScript, MakesTheJobTablesAndTheirIndexes) {
    EXPECT_EQ(Script(dspSqlServer, "kx.app_", "JobTablesDDL"),
              R"(IF OBJECT_ID(N'kx.app_job', N'U') IS NULL CREATE TABLE kx.app_job (
    jobguid varchar(64) COLLATE Latin1_General_BIN2 NOT NULL PRIMARY KEY, jobtypeid nvarchar(255) COLLATE Latin1_General_BIN2, description nvarchar(max), parameters nvarchar(max),
    appstateguid varchar(64) COLLATE Latin1_General_BIN2, jobstateid varchar(64) COLLATE Latin1_General_BIN2, nextjobitem int DEFAULT 0,
    totalitemcount int DEFAULT 0, succeededitemcount int DEFAULT 0,
    faileditemcount int DEFAULT 0, startdt varchar(32), lastcompletiondt varchar(32),
    sumoftimeincsq float DEFAULT 0, failurenote nvarchar(max), jobeditorlockguid varchar(64) COLLATE Latin1_General_BIN2, lockduration float,
    INDEX job_type NONCLUSTERED (jobtypeid, appstateguid),
    INDEX job_state NONCLUSTERED (jobstateid));
IF OBJECT_ID(N'kx.app_JobItem', N'U') IS NULL CREATE TABLE kx.app_JobItem (
    jobitemguid varchar(64) COLLATE Latin1_General_BIN2 NOT NULL PRIMARY KEY NONCLUSTERED, jobguid varchar(64) COLLATE Latin1_General_BIN2 NOT NULL, identifier nvarchar(255),
    sequence int NOT NULL, data nvarchar(max), jobitemstateid varchar(64) COLLATE Latin1_General_BIN2, startdt varchar(32), enddt varchar(32),
    failurenote nvarchar(max), jobtaskguid varchar(64) COLLATE Latin1_General_BIN2,
    INDEX jobitem_job CLUSTERED (jobguid, sequence));
IF OBJECT_ID(N'kx.app_jobtask', N'U') IS NULL CREATE TABLE kx.app_jobtask (
    jobtaskguid varchar(64) COLLATE Latin1_General_BIN2 NOT NULL PRIMARY KEY, description nvarchar(max), jobguid varchar(64) COLLATE Latin1_General_BIN2, usercontext nvarchar(max),
    machine nvarchar(255), processid int, threadid int, startdt varchar(32), enddt varchar(32),
    jobtaskstateid varchar(64) COLLATE Latin1_General_BIN2, lastjobitem nvarchar(max), command nvarchar(max), lockguid varchar(64) COLLATE Latin1_General_BIN2,
    INDEX jobtask_job NONCLUSTERED (jobguid, jobtaskstateid));
IF OBJECT_ID(N'kx.app_JobType', N'U') IS NULL CREATE TABLE kx.app_JobType (
    jobtypeid nvarchar(255) COLLATE Latin1_General_BIN2 NOT NULL PRIMARY KEY, description nvarchar(max), implprogid nvarchar(255), notificationprogid nvarchar(255));
)");
}

TEST(PostgreSqlScript, MakesTheStandInTables) {
    EXPECT_EQ(Script(dspPostgreSql, "", "StandInTablesDDL"),
              R"(SELECT pg_advisory_xact_lock(83001);
CREATE TABLE IF NOT EXISTS systemflag (flagname varchar(255) COLLATE "C" NOT NULL PRIMARY KEY, flagvalue text);
CREATE TABLE IF NOT EXISTS adminhistory (
    historyid varchar(64) COLLATE "C" NOT NULL PRIMARY KEY, writtendt varchar(32) NOT NULL, actioncode text NOT NULL,
    detail text, usercontext text);
CREATE TABLE IF NOT EXISTS applicationstate (stateid varchar(255) COLLATE "C" NOT NULL PRIMARY KEY, stateguid varchar(64) COLLATE "C");
CREATE TABLE IF NOT EXISTS subsystem (subsystemid varchar(255) COLLATE "C" NOT NULL PRIMARY KEY);
)");
}

TEST(ServerScripts, LeaveOutTheIndexesButNoKeyWhenNotComplete) {
    EXPECT_THAT(Script(dspPostgreSql, "", "JobTablesDDL", false), Not(HasSubstr("CREATE INDEX")));
    EXPECT_THAT(Script(dspSqlServer, "", "JobTablesDDL", false), Not(HasSubstr("INDEX job")));
    const std::string mariaDb = Script(dspMariaDb, "", "JobTablesDDL", false);
    EXPECT_THAT(mariaDb, Not(HasSubstr("    KEY job")));
    EXPECT_THAT(mariaDb, HasSubstr("PRIMARY KEY (jobguid, sequence, jobitemguid)"));
}

TEST(ServerScripts, NameASchemaWhereTheEngineWantsIt) {
    EXPECT_THAT(Script(dspPostgreSql, "\"My Schema\".app_", "JobTablesDDL"),
                HasSubstr("CREATE INDEX IF NOT EXISTS app_job_type ON \"My Schema\".app_job ("));
    EXPECT_THAT(Script(dspSqlServer, "[My Schema].", "JobTablesDDL"),
                HasSubstr("IF OBJECT_ID(N'[My Schema].job', N'U') IS NULL CREATE TABLE [My Schema].job ("));
}

TEST(ServerScripts, LeaveNoPlaceholderBehind) {
    for (const DataStoreProvider provider : {dspSqlServer, dspPostgreSql, dspMariaDb}) {
        EXPECT_THAT(Script(provider, "kx_", "JobTablesDDL"), Not(HasSubstr("%"))) << provider;
        EXPECT_THAT(Script(provider, "kx_", "StandInTablesDDL"), Not(HasSubstr("%"))) << provider;
    }
}

}  // namespace
}  // namespace kxjob

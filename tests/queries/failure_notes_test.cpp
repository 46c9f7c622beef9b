#include <memory>
#include <string>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::ElementsAre;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::JobHelperTest;
using testing_support::MockComponent;

class FailureNoteTest : public JobHelperTest {
protected:
    /// What goes into a block: when, where and who.
    void ExpectBlock(const std::string& now) {
        EXPECT_CALL(times, NowISODateTime()).WillOnce(Return(now));
        EXPECT_CALL(environment, FirstMachineText()).WillOnce(Return("OFFICE"));
        EXPECT_CALL(environment, SecondMachineText()).WillOnce(Return("HOST"));
        EXPECT_CALL(environment, FirstUserText()).WillOnce(Return("STAFF"));
        EXPECT_CALL(environment, SecondUserText()).WillOnce(Return("ann"));
        EXPECT_CALL(environment, ProcessId()).WillOnce(Return(4711));
        EXPECT_CALL(environment, ThreadId()).WillOnce(Return(-815));
    }

    std::shared_ptr<StrictMock<MockComponent>> content = std::make_shared<StrictMock<MockComponent>>();
    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
    const AutomationError noRow{error_number::kNoRow, "DataAccess", "no row"};
    const AutomationError missing{error_number::kClassNotRegistered, "ObjectFactory", "not registered"};
};

class AppendJobFailureNote : public FailureNoteTest {
protected:
    void ExpectGuards(const std::string& qualifier) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
    }

    void ExpectOldNote(const Value& note) {
        ExpectGuards("kx_");
        EXPECT_CALL(data, Query("db", 5, 1, "SELECT failurenote FROM kx_job WHERE jobguid = G({J})", false))
            .WillOnce(Return(Rows(1, {{note}})));
    }

    void ExpectNewNote(const std::string& note) {
        ExpectComponent("ContentExecHelper_%v.ContentExec", content);
        EXPECT_CALL(*content,
                    CallMember("ContentBlobUpdate", ElementsAre(Value("db"), Value(5), Value("kx_"),
                                                                Value("job"), Value("jobguid"), Value("{J}"),
                                                                Value("failurenote"), Value(note))));
    }

    void ExpectBlockAndNoteAlone(const Value& oldNote) {
        InSequence inThisOrder;
        ExpectOldNote(oldNote);
        ExpectBlock("10:00");
        ExpectNewNote(
            "10:00\r\n\r\n"
            "Machine details: OFFICE\\HOST\r\n\r\n"
            "User details: STAFF\\ann\r\n\r\n"
            "Process ID / Thread ID: 4711 / -815\r\n\r\n"
            "disk full");

        helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full");
    }
};

TEST_F(AppendJobFailureNote, PutsABlockAndTheNoteBehindTheOldNote) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, "SELECT failurenote FROM kx_job WHERE jobguid = G({J})", false))
        .WillOnce(Return(Rows(1, {{"  the old note "}})));
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Return("2026-03-01T09:30:15.123Z"));
    EXPECT_CALL(environment, FirstMachineText()).WillOnce(Return("OFFICE"));
    EXPECT_CALL(environment, SecondMachineText()).WillOnce(Return("HOST"));
    EXPECT_CALL(environment, FirstUserText()).WillOnce(Return("STAFF"));
    EXPECT_CALL(environment, SecondUserText()).WillOnce(Return("ann"));
    EXPECT_CALL(environment, ProcessId()).WillOnce(Return(4711));
    EXPECT_CALL(environment, ThreadId()).WillOnce(Return(815));
    ExpectComponent("ContentExecHelper_%v.ContentExec", content);
    EXPECT_CALL(*content, CallMember("ContentBlobUpdate",
                                     ElementsAre(Value("db"), Value(5), Value("kx_"), Value("job"),
                                                 Value("jobguid"), Value("{J}"), Value("failurenote"),
                                                 Value("  the old note \r\n\r\n"
                                                       "2026-03-01T09:30:15.123Z\r\n\r\n"
                                                       "Machine details: OFFICE\\HOST\r\n\r\n"
                                                       "User details: STAFF\\ann\r\n\r\n"
                                                       "Process ID / Thread ID: 4711 / 815\r\n\r\n"
                                                       "disk full"))));

    helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full");

    EXPECT_EQ(made.objectFactories, 1);
    EXPECT_EQ(made.environments, 1);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(AppendJobFailureNote, StoresBlockAndNoteAloneWhenTheOldNoteIsNull) {
    ExpectBlockAndNoteAlone(Null{});
}

TEST_F(AppendJobFailureNote, StoresBlockAndNoteAloneWhenTheOldNoteIsEmpty) {
    ExpectBlockAndNoteAlone("");
}

TEST_F(AppendJobFailureNote, StoresBlockAndNoteAloneWhenTheOldNoteIsOnlyBlanks) {
    ExpectBlockAndNoteAlone("   ");
}

TEST_F(AppendJobFailureNote, PutsASecondBlockBehindTheFirst) {
    InSequence inThisOrder;
    ExpectOldNote(Null{});
    ExpectBlock("10:00");
    ExpectNewNote(
        "10:00\r\n\r\n"
        "Machine details: OFFICE\\HOST\r\n\r\n"
        "User details: STAFF\\ann\r\n\r\n"
        "Process ID / Thread ID: 4711 / -815\r\n\r\n"
        "first");
    ExpectOldNote(
        "10:00\r\n\r\n"
        "Machine details: OFFICE\\HOST\r\n\r\n"
        "User details: STAFF\\ann\r\n\r\n"
        "Process ID / Thread ID: 4711 / -815\r\n\r\n"
        "first");
    ExpectBlock("11:00");
    ExpectNewNote(
        "10:00\r\n\r\n"
        "Machine details: OFFICE\\HOST\r\n\r\n"
        "User details: STAFF\\ann\r\n\r\n"
        "Process ID / Thread ID: 4711 / -815\r\n\r\n"
        "first\r\n\r\n"
        "11:00\r\n\r\n"
        "Machine details: OFFICE\\HOST\r\n\r\n"
        "User details: STAFF\\ann\r\n\r\n"
        "Process ID / Thread ID: 4711 / -815\r\n\r\n"
        "second");

    helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "first");
    helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "second");

    EXPECT_EQ(made.environments, 2);
}

TEST_F(AppendJobFailureNote, AddsTheBlockForAnEmptyNoteToo) {
    InSequence inThisOrder;
    ExpectOldNote("old");
    ExpectBlock("10:00");
    ExpectNewNote(
        "old\r\n\r\n"
        "10:00\r\n\r\n"
        "Machine details: OFFICE\\HOST\r\n\r\n"
        "User details: STAFF\\ann\r\n\r\n"
        "Process ID / Thread ID: 4711 / -815\r\n\r\n");

    helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "");
}

TEST_F(AppendJobFailureNote, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectGuards("");
    EXPECT_CALL(data, Query("", 5, 1, "SELECT failurenote FROM job WHERE jobguid = G({J})", false))
        .WillOnce(Return(Rows(1, {{""}})));
    ExpectBlock("10:00");
    ExpectComponent("ContentExecHelper_%v.ContentExec", content);
    EXPECT_CALL(*content, CallMember("ContentBlobUpdate",
                                     ElementsAre(Value(""), Value(5), Value(""), Value("job"),
                                                 Value("jobguid"), Value("{J}"), Value("failurenote"), _)));

    helper.AppendJobFailureNote("", 5, "", "{J}", "disk full");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(AppendJobFailureNote, RaisesForAnUnknownJobAndWritesNothing) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Return(Value()));

    ExpectOwnError([&] { helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full"); }, 751,
                   "AppendJobFailureNote", "Unable to find Job {J}", {"AppendJobFailureNote"});
    EXPECT_EQ(made.environments, 0);
}

TEST_F(AppendJobFailureNote, PassesOnThatTheStoreFoundNoJobAndWritesNothing) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Throw(noRow));

    ExpectPassedOn([&] { helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full"); }, noRow,
                   {"AppendJobFailureNote"});
    EXPECT_EQ(made.environments, 0);
}

TEST_F(AppendJobFailureNote, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full"); }, refusal,
                   {"AppendJobFailureNote"});
}

TEST_F(AppendJobFailureNote, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full"); }, refusal,
                   {"AppendJobFailureNote"});
}

TEST_F(AppendJobFailureNote, WritesNothingWhenTheTimeIsNotToBeHad) {
    InSequence inThisOrder;
    ExpectOldNote("old");
    EXPECT_CALL(times, NowISODateTime()).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full"); }, failure,
                   {"AppendJobFailureNote"});
}

TEST_F(AppendJobFailureNote, PassesOnThatThereIsNoContentComponent) {
    InSequence inThisOrder;
    ExpectOldNote("old");
    ExpectBlock("10:00");
    EXPECT_CALL(factory, CreateVersioned("ContentExecHelper_%v.ContentExec")).WillOnce(Throw(missing));

    ExpectPassedOn([&] { helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full"); }, missing,
                   {"AppendJobFailureNote"});
}

TEST_F(AppendJobFailureNote, PassesOnThatTheNoteCannotBeWritten) {
    InSequence inThisOrder;
    ExpectOldNote("old");
    ExpectBlock("10:00");
    ExpectComponent("ContentExecHelper_%v.ContentExec", content);
    EXPECT_CALL(*content, CallMember("ContentBlobUpdate", _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.AppendJobFailureNote("db", 5, "kx_", "{J}", "disk full"); }, failure,
                   {"AppendJobFailureNote"});
}

class AppendJobItemFailureNote : public FailureNoteTest {
protected:
    void ExpectGuards() {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID"));
    }

    void ExpectBlockAndNoteAlone(const Value& oldNote) {
        InSequence inThisOrder;
        ExpectGuards();
        EXPECT_CALL(data,
                    Query("db", 5, 1, "SELECT failurenote FROM kx_JobItem WHERE jobitemguid = G({I})", false))
            .WillOnce(Return(Rows(1, {{oldNote}})));
        ExpectBlock("10:00");
        ExpectComponent("ContentExecHelper_%v.ContentExec", content);
        EXPECT_CALL(*content, CallMember("ContentBlobUpdate",
                                         ElementsAre(Value("db"), Value(5), Value("kx_"), Value("JobItem"),
                                                     Value("jobitemguid"), Value("{I}"), Value("failurenote"),
                                                     Value("10:00\r\n\r\n"
                                                           "Machine details: OFFICE\\HOST\r\n\r\n"
                                                           "User details: STAFF\\ann\r\n\r\n"
                                                           "Process ID / Thread ID: 4711 / -815\r\n\r\n"
                                                           "disk full"))));

        helper.AppendJobItemFailureNote("db", 5, "kx_", "{I}", "disk full");
    }
};

TEST_F(AppendJobItemFailureNote, PutsABlockAndTheNoteBehindTheOldNote) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID"));
    EXPECT_CALL(data,
                Query("db", 5, 1, "SELECT failurenote FROM kx_JobItem WHERE jobitemguid = G({I})", false))
        .WillOnce(Return(Rows(1, {{"  the old note "}})));
    ExpectBlock("10:00");
    ExpectComponent("ContentExecHelper_%v.ContentExec", content);
    EXPECT_CALL(*content, CallMember("ContentBlobUpdate",
                                     ElementsAre(Value("db"), Value(5), Value("kx_"), Value("JobItem"),
                                                 Value("jobitemguid"), Value("{I}"), Value("failurenote"),
                                                 Value("  the old note \r\n\r\n"
                                                       "10:00\r\n\r\n"
                                                       "Machine details: OFFICE\\HOST\r\n\r\n"
                                                       "User details: STAFF\\ann\r\n\r\n"
                                                       "Process ID / Thread ID: 4711 / -815\r\n\r\n"
                                                       "disk full"))));

    helper.AppendJobItemFailureNote("db", 5, "kx_", "{I}", "disk full");

    EXPECT_EQ(made.environments, 1);
    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(AppendJobItemFailureNote, StoresBlockAndNoteAloneWhenTheOldNoteIsNull) {
    ExpectBlockAndNoteAlone(Null{});
}

TEST_F(AppendJobItemFailureNote, StoresBlockAndNoteAloneWhenTheOldNoteIsEmpty) {
    ExpectBlockAndNoteAlone("");
}

TEST_F(AppendJobItemFailureNote, StoresBlockAndNoteAloneWhenTheOldNoteIsOnlyBlanks) {
    ExpectBlockAndNoteAlone("   ");
}

TEST_F(AppendJobItemFailureNote, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID"));
    EXPECT_CALL(data, Query("", 5, 1, "SELECT failurenote FROM JobItem WHERE jobitemguid = G({I})", false))
        .WillOnce(Return(Rows(1, {{""}})));
    ExpectBlock("10:00");
    ExpectComponent("ContentExecHelper_%v.ContentExec", content);
    EXPECT_CALL(*content, CallMember("ContentBlobUpdate", _));

    helper.AppendJobItemFailureNote("", 5, "", "{I}", "disk full");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(AppendJobItemFailureNote, RaisesForAnUnknownItemAndWritesNothing) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Return(Value()));

    ExpectOwnError([&] { helper.AppendJobItemFailureNote("db", 5, "kx_", "{I}", "disk full"); }, 752,
                   "AppendJobItemFailureNote", "Unable to find Job Item {I}", {"AppendJobItemFailureNote"});
    EXPECT_EQ(made.environments, 0);
}

TEST_F(AppendJobItemFailureNote, PassesOnThatTheStoreFoundNoItemAndWritesNothing) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Throw(noRow));

    ExpectPassedOn([&] { helper.AppendJobItemFailureNote("db", 5, "kx_", "{I}", "disk full"); }, noRow,
                   {"AppendJobItemFailureNote"});
}

TEST_F(AppendJobItemFailureNote, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.AppendJobItemFailureNote("db", 5, "kx_", "{I}", "disk full"); }, refusal,
                   {"AppendJobItemFailureNote"});
}

TEST_F(AppendJobItemFailureNote, PassesOnTheRefusalOfTheItemGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{I}", "JobItemGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.AppendJobItemFailureNote("db", 5, "kx_", "{I}", "disk full"); }, refusal,
                   {"AppendJobItemFailureNote"});
}

TEST_F(AppendJobItemFailureNote, PassesOnThatTheNoteCannotBeWritten) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(data, Query("db", 5, 1, _, false)).WillOnce(Return(Rows(1, {{"old"}})));
    ExpectBlock("10:00");
    ExpectComponent("ContentExecHelper_%v.ContentExec", content);
    EXPECT_CALL(*content, CallMember("ContentBlobUpdate", _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.AppendJobItemFailureNote("db", 5, "kx_", "{I}", "disk full"); }, failure,
                   {"AppendJobItemFailureNote"});
}

}  // namespace
}  // namespace kxjob

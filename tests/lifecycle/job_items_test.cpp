#include <vector>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::AllOf;
using ::testing::Field;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::SetArgReferee;
using ::testing::Throw;
using testing_support::JobHelperTest;

class JobItemsTest : public JobHelperTest {
protected:
    static auto EmptyOutputs() {
        return AllOf(Field("first", &LongTextOutputs::first, ""),
                     Field("second", &LongTextOutputs::second, ""),
                     Field("third", &LongTextOutputs::third, ""));
    }

    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

class CreateJobItem : public JobItemsTest {
protected:
    void ExpectGuards(const std::string& qualifier) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter(qualifier, "NameQualifier"));
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    }
};

TEST_F(CreateJobItem, InsertsTheItemThenStoresItsDataAndReturnsItsNewGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "INSERT INTO kx_JobItem (jobitemguid, jobguid, identifier, sequence)"
                              " VALUES (V({new}), V({J}), V({I}), 12)"));
    EXPECT_CALL(data, WriteLongText("db", 5, 1, "kx_", "JobItem", "jobitemguid", "{new}", "data", "payload",
                                    EmptyOutputs()))
        .WillOnce(SetArgReferee<9>(LongTextOutputs{"these", "are", "ignored"}));

    EXPECT_EQ(helper.CreateJobItem("db", 5, "kx_", "{J}", "{I}", "payload", 12), "{new}");

    EXPECT_EQ(made.objectFactories, 1);
    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(CreateJobItem, StoresEmptyDataToo) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "INSERT INTO kx_JobItem (jobitemguid, jobguid, identifier, sequence)"
                              " VALUES (V({new}), V({J}), V({I}), 0)"));
    EXPECT_CALL(data, WriteLongText("db", 5, 1, "kx_", "JobItem", "jobitemguid", "{new}", "data", "",
                                    EmptyOutputs()));

    helper.CreateJobItem("db", 5, "kx_", "{J}", "{I}", "", 0);
}

TEST_F(CreateJobItem, ReturnsAGuidOfItsOwnAndNotTheIdentifier) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "INSERT INTO kx_JobItem (jobitemguid, jobguid, identifier, sequence)"
                              " VALUES (V({new}), V({J}), V({I}), 1)"));
    EXPECT_CALL(data, WriteLongText(_, _, _, _, _, "jobitemguid", "{new}", _, _, _));

    EXPECT_EQ(helper.CreateJobItem("db", 5, "kx_", "{J}", "{I}", "", 1), "{new}");
}

TEST_F(CreateJobItem, WritesANegativeSequenceWithItsSign) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "INSERT INTO kx_JobItem (jobitemguid, jobguid, identifier, sequence)"
                              " VALUES (V({new}), V({J}), V({I}), -3)"));
    EXPECT_CALL(data, WriteLongText(_, _, _, _, _, _, _, _, _, _));

    helper.CreateJobItem("db", 5, "kx_", "{J}", "{I}", "", -3);
}

TEST_F(CreateJobItem, TakesAllThreeFromTheConfigurationWithoutAConnectionString) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectGuards("cfg_");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("cfg-db", 3, 1,
                              "INSERT INTO cfg_JobItem (jobitemguid, jobguid, identifier, sequence)"
                              " VALUES (V({new}), V({J}), V({I}), 12)"));
    EXPECT_CALL(data, WriteLongText("cfg-db", 3, 1, "cfg_", "JobItem", "jobitemguid", "{new}", "data",
                                    "payload", EmptyOutputs()));

    helper.CreateJobItem("", 5, "kx_", "{J}", "{I}", "payload", 12);
}

TEST_F(CreateJobItem, TakesAllThreeFromTheConfigurationWithoutAQualifier) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectGuards("cfg_");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("cfg-db", 3, 1,
                              "INSERT INTO cfg_JobItem (jobitemguid, jobguid, identifier, sequence)"
                              " VALUES (V({new}), V({J}), V({I}), 12)"));
    EXPECT_CALL(data, WriteLongText("cfg-db", 3, 1, "cfg_", "JobItem", "jobitemguid", "{new}", "data",
                                    "payload", EmptyOutputs()));

    helper.CreateJobItem("db", 5, "", "{J}", "{I}", "payload", 12);
}

TEST_F(CreateJobItem, PassesOnTheRefusalOfTheQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.CreateJobItem("db", 5, "kx_", "{J}", "{I}", "payload", 12); }, refusal,
                   {"CreateJobItem"});
}

TEST_F(CreateJobItem, PassesOnTheRefusalOfTheJobGuid) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.CreateJobItem("db", 5, "kx_", "{J}", "{I}", "payload", 12); }, refusal,
                   {"CreateJobItem"});
}

TEST_F(CreateJobItem, StoresNoDataWhenTheInsertFails) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 5, 1, _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.CreateJobItem("db", 5, "kx_", "{J}", "{I}", "payload", 12); }, failure,
                   {"CreateJobItem"});
}

TEST_F(CreateJobItem, LeavesTheItemWithoutItsDataWhenThatCannotBeStored) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{new}"));
    EXPECT_CALL(data, Execute("db", 5, 1, _));
    EXPECT_CALL(data, WriteLongText(_, _, _, _, _, _, _, _, _, _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.CreateJobItem("db", 5, "kx_", "{J}", "{I}", "payload", 12); }, failure,
                   {"CreateJobItem"});
}

class CreateSimpleJobItems : public JobItemsTest {
protected:
    void ExpectGuards() {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    }

    /// One item: a GUID is made and its statement handed over.
    void ExpectItem(const std::string& guid, const std::string& statement) {
        EXPECT_CALL(guids, NewGuid()).WillOnce(Return(guid));
        EXPECT_CALL(executor, Add(statement));
    }

    void ExpectRefused(const Value& identifiers, std::int32_t number) {
        {
            InSequence inThisOrder;
            ExpectGuards();
        }
        ExpectOwnError(
            [&] { helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", identifiers); }, number,
            "CreateSimpleJobItems",
            "You should pass a one dimensional array of GUIDS to Job_83.JobHelper.CreateSimpleJobItems",
            {"CreateSimpleJobItems"});
        EXPECT_EQ(made.executors, 0);
    }
};

TEST_F(CreateSimpleJobItems, HandsOverOneNumberedStatementForEachIdentifierThenFlushes) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(executor, Open("db", 5, 100));
    ExpectTrace("Adding 2 Job Items in batches of upto 100", 4, "CreateSimpleJobItems");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{g0}"));
    EXPECT_CALL(executor, Add("INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
                              " VALUES (V({J}), V({g0}), V({a}), 0)"));
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{g1}"));
    EXPECT_CALL(executor, Add("INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
                              " VALUES (V({J}), V({g1}), V({b}), 1)"));
    EXPECT_CALL(executor, Flush());

    helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", Array::List({"{a}", "{b}"}));

    EXPECT_EQ(made.objectFactories, 1);
    EXPECT_EQ(made.executors, 1);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(CreateSimpleJobItems, NumbersFromZeroWhateverTheArrayStartsAt) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(executor, Open("db", 5, 100));
    ExpectTrace("Adding 3 Job Items in batches of upto 100", 4, "CreateSimpleJobItems");
    ExpectItem("{g0}",
               "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
               " VALUES (V({J}), V({g0}), V({a}), 0)");
    ExpectItem("{g1}",
               "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
               " VALUES (V({J}), V({g1}), V({b}), 1)");
    ExpectItem("{g2}",
               "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
               " VALUES (V({J}), V({g2}), V({c}), 2)");
    EXPECT_CALL(executor, Flush());

    helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", Array::List({"{a}", "{b}", "{c}"}, 1));
}

TEST_F(CreateSimpleJobItems, TracesAndFlushesForAnEmptyArrayToo) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(executor, Open("db", 5, 100));
    ExpectTrace("Adding 0 Job Items in batches of upto 100", 4, "CreateSimpleJobItems");
    EXPECT_CALL(executor, Flush());

    helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", Array::List({}));
}

TEST_F(CreateSimpleJobItems, Hands250StatementsInOrderToAnExecutorOfBatchesOf100) {
    std::vector<std::string> added;
    const std::vector<Value> identifiers(250, Value("{a}"));
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(executor, Open("db", 5, 100));
    ExpectTrace("Adding 250 Job Items in batches of upto 100", 4, "CreateSimpleJobItems");
    for (int i = 0; i < 250; ++i) {
        EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{g}"));
        EXPECT_CALL(executor, Add(_)).WillOnce([&](const std::string& sql) { added.push_back(sql); });
    }
    EXPECT_CALL(executor, Flush());

    helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", Array::List(identifiers));

    ASSERT_EQ(added.size(), 250U);
    EXPECT_EQ(added[0],
              "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
              " VALUES (V({J}), V({g}), V({a}), 0)");
    EXPECT_EQ(added[99],
              "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
              " VALUES (V({J}), V({g}), V({a}), 99)");
    EXPECT_EQ(added[100],
              "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
              " VALUES (V({J}), V({g}), V({a}), 100)");
    EXPECT_EQ(added[249],
              "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
              " VALUES (V({J}), V({g}), V({a}), 249)");
}

TEST_F(CreateSimpleJobItems, GivesTheFormatterEachIdentifierAsItIs) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(executor, Open("db", 5, 100));
    ExpectTrace("Adding 3 Job Items in batches of upto 100", 4, "CreateSimpleJobItems");
    ExpectItem("{g0}",
               "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
               " VALUES (V({J}), V({g0}), V(42), 0)");
    ExpectItem("{g1}",
               "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
               " VALUES (V({J}), V({g1}), NULL, 1)");
    ExpectItem("{g2}",
               "INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence)"
               " VALUES (V({J}), V({g2}), V(), 2)");
    EXPECT_CALL(executor, Flush());

    helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", Array::List({42, Null{}, ""}));
}

TEST_F(CreateSimpleJobItems, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID"));
    EXPECT_CALL(executor, Open("", 5, 100));
    ExpectTrace("Adding 1 Job Items in batches of upto 100", 4, "CreateSimpleJobItems");
    ExpectItem("{g0}",
               "INSERT INTO JobItem (jobguid, jobitemguid, identifier, sequence)"
               " VALUES (V({J}), V({g0}), V({a}), 0)");
    EXPECT_CALL(executor, Flush());

    helper.CreateSimpleJobItems("", 5, "", "{J}", Array::List({"{a}"}));

    EXPECT_EQ(made.settings, 0);
}

TEST_F(CreateSimpleJobItems, RefusesAText) {
    ExpectRefused("{a}", 749);
}

TEST_F(CreateSimpleJobItems, RefusesANumber) {
    ExpectRefused(1, 749);
}

TEST_F(CreateSimpleJobItems, RefusesEmpty) {
    ExpectRefused({}, 749);
}

TEST_F(CreateSimpleJobItems, RefusesNull) {
    ExpectRefused(Null{}, 749);
}

TEST_F(CreateSimpleJobItems, RefusesAnArrayOfTwoDimensions) {
    ExpectRefused(Array({{0, 2}, {0, 1}}), 750);
}

TEST_F(CreateSimpleJobItems, RefusesAnArrayOfThreeDimensions) {
    ExpectRefused(Array({{1, 1}, {1, 1}, {1, 1}}), 750);
}

TEST_F(CreateSimpleJobItems, RefusesRowsBecauseTheyHaveTwoDimensions) {
    ExpectRefused(Rows(1, {{"{a}"}}), 750);
}

TEST_F(CreateSimpleJobItems, PassesOnTheRefusalOfTheQualifierBeforeTheArrayIsLookedAt) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", "{a}"); }, refusal,
                   {"CreateSimpleJobItems"});
}

TEST_F(CreateSimpleJobItems, PassesOnTheRefusalOfTheJobGuidBeforeTheArrayIsLookedAt) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{J}", "JobGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", "{a}"); }, refusal,
                   {"CreateSimpleJobItems"});
}

TEST_F(CreateSimpleJobItems, TracesNothingWhenTheExecutorCannotBeOpened) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(executor, Open("db", 5, 100)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", Array::List({"{a}"})); }, failure,
                   {"CreateSimpleJobItems"});
}

TEST_F(CreateSimpleJobItems, StopsAtAFailingStatementWithoutFlushing) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(executor, Open("db", 5, 100));
    ExpectTrace("Adding 3 Job Items in batches of upto 100", 4, "CreateSimpleJobItems");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{g0}"));
    EXPECT_CALL(executor, Add(_));
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{g1}"));
    EXPECT_CALL(executor, Add(_)).WillOnce(Throw(failure));

    ExpectPassedOn(
        [&] {
            helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", Array::List({"{a}", "{b}", "{c}"}));
        },
        failure, {"CreateSimpleJobItems"});
}

TEST_F(CreateSimpleJobItems, PassesOnThatTheLastBatchFails) {
    InSequence inThisOrder;
    ExpectGuards();
    EXPECT_CALL(executor, Open("db", 5, 100));
    ExpectTrace("Adding 1 Job Items in batches of upto 100", 4, "CreateSimpleJobItems");
    EXPECT_CALL(guids, NewGuid()).WillOnce(Return("{g0}"));
    EXPECT_CALL(executor, Add(_));
    EXPECT_CALL(executor, Flush()).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.CreateSimpleJobItems("db", 5, "kx_", "{J}", Array::List({"{a}"})); }, failure,
                   {"CreateSimpleJobItems"});
}

}  // namespace
}  // namespace kxjob

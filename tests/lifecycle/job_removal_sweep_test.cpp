#include <memory>
#include <string>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::_;
using ::testing::ElementsAre;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::StartsWith;
using ::testing::StrictMock;
using ::testing::Throw;
using testing_support::ErrorOf;
using testing_support::JobHelperTest;
using testing_support::MockComponent;

class SweepTest : public JobHelperTest {
protected:
    void ExpectIrrelevantJobs(const Value& rows) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
        EXPECT_CALL(data, Query("db", 5, 1,
                                "SELECT jobguid, jobtypeid FROM kx_job WHERE  appstateguid <> G({prod}) AND "
                                " appstateguid <> G({dev})",
                                true))
            .WillOnce(Return(rows));
    }

    /// All that RemoveJobAndItems does.
    void ExpectRemovalOf(const std::string& guid) {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter(guid, "JobGUID"));
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualfier"));
        ExpectTrace("Removing Job Items for " + guid, 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G(" + guid + ")"));
        ExpectTrace("Removing Job Tasks for " + guid, 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid = G(" + guid + ")"));
        ExpectTrace("Removing Job " + guid, 4, "RemoveJobAndItems");
        EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_job WHERE jobguid = G(" + guid + ")"));
        ExpectComponent("AppModelAdmin_%v.Admin", history);
        EXPECT_CALL(*history, CallMember("AdminHistoryWrite",
                                         ElementsAre(Value("db"), Value("kx_"), Value("JOB_REMOVED"),
                                                     Value("<job><jobguid>" + guid + "</jobguid></job>"))));
    }

    /// The orphan step of a container with the one job {keep}.
    void ExpectOrphanStep() {
        ExpectTableNames();
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        EXPECT_CALL(data, Query("db", 5, 1, "SELECT jobguid FROM kx_job", true))
            .WillOnce(Return(Rows(1, {{"{keep}"}})));
        ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
        EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid NOT IN(G({keep}))"));
        ExpectTrace("Removing any orphaned rows in jobtask", 4, "RemoveOrphanedJobInformation");
        EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_jobtask WHERE jobguid NOT IN(G({keep}))"));
    }

    void Sweep() { helper.RemoveIrrelevantJobsInContainer("db", 5, "kx_", "{prod}", "{dev}"); }

    std::shared_ptr<StrictMock<MockComponent>> history = std::make_shared<StrictMock<MockComponent>>();
    const AutomationError refusal{error_number::kGuardRefusal, "InputGuard", "unsafe"};
    const AutomationError failure{error_number::kStatementFailed, "DataAccess", "[HY000] it is gone"};
};

class RemoveIrrelevantJobsInContainer : public SweepTest {};

TEST_F(RemoveIrrelevantJobsInContainer, RemovesTheJobsOfNeitherStateInTheOrderFoundThenTheOrphans) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, jobtypeid FROM kx_job WHERE  appstateguid <> G({prod}) AND "
                            " appstateguid <> G({dev})",
                            true))
        .WillOnce(Return(Rows(2, {{"{2}", "REPORT"}, {"{1}", "EXPORT"}})));
    ExpectTrace("Removing REPORT Job {2}", 4, "RemoveIrrelevantJobsInContainer");
    ExpectRemovalOf("{2}");
    ExpectTrace("Removing EXPORT Job {1}", 4, "RemoveIrrelevantJobsInContainer");
    ExpectRemovalOf("{1}");
    ExpectOrphanStep();

    helper.RemoveIrrelevantJobsInContainer("db", 5, "kx_", "{prod}", "{dev}");

    EXPECT_EQ(made.settings, 0);
    EXPECT_EQ(made.objectFactories, 4);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(RemoveIrrelevantJobsInContainer, RunsTheOrphanStepWhenNoJobIsIrrelevant) {
    InSequence inThisOrder;
    ExpectIrrelevantJobs({});
    ExpectOrphanStep();

    Sweep();
}

TEST_F(RemoveIrrelevantJobsInContainer, LooksByTheDevelopmentStateOnlyWhenThereIsNoProductionState) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, jobtypeid FROM kx_job WHERE  appstateguid <> G({dev})", true))
        .WillOnce(Return(Value()));
    ExpectOrphanStep();

    helper.RemoveIrrelevantJobsInContainer("db", 5, "kx_", "{0}", "{dev}");
}

TEST_F(RemoveIrrelevantJobsInContainer, ComparesTheNullGuidLetterByLetter) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{NONE}"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, jobtypeid FROM kx_job WHERE  appstateguid <> G({none}) AND "
                            " appstateguid <> G({dev})",
                            true))
        .WillOnce(Return(Value()));
    ExpectOrphanStep();

    helper.RemoveIrrelevantJobsInContainer("db", 5, "kx_", "{none}", "{dev}");
}

TEST_F(RemoveIrrelevantJobsInContainer, AddsNothingToTheLogLineForANullJobType) {
    InSequence inThisOrder;
    ExpectIrrelevantJobs(Rows(2, {{"{1}", Null{}}}));
    ExpectTrace("Removing  Job {1}", 4, "RemoveIrrelevantJobsInContainer");
    ExpectRemovalOf("{1}");
    ExpectOrphanStep();

    Sweep();
}

TEST_F(RemoveIrrelevantJobsInContainer, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
    EXPECT_CALL(data, Query("", 5, 1,
                            "SELECT jobguid, jobtypeid FROM job WHERE  appstateguid <> G({prod}) AND "
                            " appstateguid <> G({dev})",
                            true))
        .WillOnce(Return(Value()));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(data, Query("", 5, 1, "SELECT jobguid FROM job", true)).WillOnce(Return(Value()));
    ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("", 5, 1, "DELETE FROM JobItem"));
    ExpectTrace("Removing any orphaned rows in jobtask", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("", 5, 1, "DELETE FROM jobtask"));

    helper.RemoveIrrelevantJobsInContainer("", 5, "", "{prod}", "{dev}");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(RemoveIrrelevantJobsInContainer, LeavesTheConfigurationToTheRemovalOfAJobWhenItHasNoQualifier) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, jobtypeid FROM job WHERE  appstateguid <> G({prod}) AND "
                            " appstateguid <> G({dev})",
                            true))
        .WillOnce(Return(Rows(2, {{"{1}", "REPORT"}})));
    ExpectTrace("Removing REPORT Job {1}", 4, "RemoveIrrelevantJobsInContainer");
    ExpectConfiguration("db", 5, "kx_");
    ExpectRemovalOf("{1}");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, "SELECT jobguid FROM job", true)).WillOnce(Return(Value()));
    ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM JobItem"));
    ExpectTrace("Removing any orphaned rows in jobtask", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM jobtask"));

    helper.RemoveIrrelevantJobsInContainer("db", 5, "", "{prod}", "{dev}");
}

TEST_F(RemoveIrrelevantJobsInContainer, SaysThatItWasRemovingWhenAJobHasNoGuid) {
    InSequence inThisOrder;
    ExpectIrrelevantJobs(Rows(2, {{Null{}, "REPORT"}}));

    const AutomationError error = ErrorOf([&] { Sweep(); });

    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x800A005EU));
    EXPECT_THAT(error.Description(), StartsWith("Unable to remove irrelevant jobs.\r\n\r\n"));
    ExpectTold(error, {"RemoveIrrelevantJobsInContainer"});
}

TEST_F(RemoveIrrelevantJobsInContainer, PassesOnTheRefusalOfTheDevelopmentStateAsItIs) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Sweep(); }, refusal, {"RemoveIrrelevantJobsInContainer"});
}

TEST_F(RemoveIrrelevantJobsInContainer, PassesOnTheRefusalOfTheQualifierAsItIs) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { Sweep(); }, refusal, {"RemoveIrrelevantJobsInContainer"});
}

TEST_F(RemoveIrrelevantJobsInContainer, SaysThatItWasLookingWhenTheQueryFails) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Sweep(); },
                   {error_number::kStatementFailed, "DataAccess",
                    "Unable to look for irrelevant jobs.\r\n\r\n[HY000] it is gone"},
                   {"RemoveIrrelevantJobsInContainer"});
}

TEST_F(RemoveIrrelevantJobsInContainer, SaysThatItWasRemovingWhenTheTraceFails) {
    InSequence inThisOrder;
    ExpectIrrelevantJobs(Rows(2, {{"{1}", "REPORT"}}));
    EXPECT_CALL(trace, Write("Removing REPORT Job {1}", _, _, _, _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Sweep(); },
                   {error_number::kStatementFailed, "DataAccess",
                    "Unable to remove irrelevant jobs.\r\n\r\n[HY000] it is gone"},
                   {"RemoveIrrelevantJobsInContainer"});
}

TEST_F(RemoveIrrelevantJobsInContainer, StopsAtARemovalThatFailsAndSaysThatItWasRemoving) {
    InSequence inThisOrder;
    ExpectIrrelevantJobs(Rows(2, {{"{1}", "REPORT"}, {"{2}", "REPORT"}, {"{3}", "REPORT"}}));
    ExpectTrace("Removing REPORT Job {1}", 4, "RemoveIrrelevantJobsInContainer");
    ExpectRemovalOf("{1}");
    ExpectTrace("Removing REPORT Job {2}", 4, "RemoveIrrelevantJobsInContainer");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{2}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualfier"));
    ExpectTrace("Removing Job Items for {2}", 4, "RemoveJobAndItems");
    EXPECT_CALL(data, Execute("db", 5, 1, "DELETE FROM kx_JobItem WHERE jobguid = G({2})"))
        .WillOnce(Throw(failure));

    const AutomationError error = ErrorOf([&] { Sweep(); });

    EXPECT_EQ(error.Number(), error_number::kStatementFailed);
    EXPECT_EQ(error.Source(), "DataAccess");
    EXPECT_EQ(error.Description(), "Unable to remove irrelevant jobs.\r\n\r\n[HY000] it is gone");
    ASSERT_EQ(debugTools->told.size(), 2U);
    EXPECT_EQ(debugTools->told[0].method, "RemoveJobAndItems");
    EXPECT_EQ(debugTools->told[0].description, "[HY000] it is gone");
    EXPECT_EQ(debugTools->told[1].method, "RemoveIrrelevantJobsInContainer");
    EXPECT_EQ(debugTools->told[1].number, error_number::kStatementFailed);
    EXPECT_EQ(debugTools->told[1].source, "DataAccess");
    EXPECT_EQ(debugTools->told[1].description, "Unable to remove irrelevant jobs.\r\n\r\n[HY000] it is gone");
}

TEST_F(RemoveIrrelevantJobsInContainer, PassesOnThatTheOrphansCannotBeRemovedAsItIs) {
    InSequence inThisOrder;
    ExpectIrrelevantJobs(Rows(2, {{"{1}", "REPORT"}}));
    ExpectTrace("Removing REPORT Job {1}", 4, "RemoveIrrelevantJobsInContainer");
    ExpectRemovalOf("{1}");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, "SELECT jobguid FROM kx_job", true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { Sweep(); }, failure,
                   {"RemoveOrphanedJobInformation", "RemoveIrrelevantJobsInContainer"});
}

class RemoveIrrelevantJobsInAllContainers : public SweepTest {
protected:
    void ExpectStates() {
        EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
        ExpectComponent("AppModelAdmin_%v.Admin", states);
        EXPECT_CALL(*states, CallMember("ApplicationStateReadGUID",
                                        ElementsAre(Value("db"), Value("kx_"), Value("PRODUCTION"))))
            .WillOnce(Return("{prod}"));
        EXPECT_CALL(*states, CallMember("ApplicationStateReadGUID",
                                        ElementsAre(Value("db"), Value("kx_"), Value("DEVELOPMENT"))))
            .WillOnce(Return("{dev}"));
    }

    void SweepAll() { helper.RemoveIrrelevantJobsInAllContainers("db", 5, "kx_"); }

    std::shared_ptr<StrictMock<MockComponent>> states = std::make_shared<StrictMock<MockComponent>>();
};

TEST_F(RemoveIrrelevantJobsInAllContainers, ReadsBothStatesThenSweepsTheContainerThenWarns) {
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    ExpectComponent("AppModelAdmin_%v.Admin", states);
    EXPECT_CALL(*states, CallMember("ApplicationStateReadGUID",
                                    ElementsAre(Value("db"), Value("kx_"), Value("PRODUCTION"))))
        .WillOnce(Return("{prod}"));
    EXPECT_CALL(*states, CallMember("ApplicationStateReadGUID",
                                    ElementsAre(Value("db"), Value("kx_"), Value("DEVELOPMENT"))))
        .WillOnce(Return("{dev}"));
    ExpectIrrelevantJobs(Rows(2, {{"{1}", "REPORT"}}));
    ExpectTrace("Removing REPORT Job {1}", 4, "RemoveIrrelevantJobsInContainer");
    ExpectRemovalOf("{1}");
    ExpectOrphanStep();
    ExpectTrace("How do we determine related containers", 2, "RemoveIrrelevantJobsInAllContainers");

    helper.RemoveIrrelevantJobsInAllContainers("db", 5, "kx_");

    EXPECT_EQ(made.settings, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(RemoveIrrelevantJobsInAllContainers, WarnsWhenNothingWasIrrelevantToo) {
    InSequence inThisOrder;
    ExpectStates();
    ExpectIrrelevantJobs({});
    ExpectOrphanStep();
    ExpectTrace("How do we determine related containers", 2, "RemoveIrrelevantJobsInAllContainers");

    SweepAll();
}

TEST_F(RemoveIrrelevantJobsInAllContainers, UsesAnEmptyConnectionAndQualifierAsGiven) {
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    ExpectComponent("AppModelAdmin_%v.Admin", states);
    EXPECT_CALL(*states, CallMember("ApplicationStateReadGUID",
                                    ElementsAre(Value(""), Value(""), Value("PRODUCTION"))))
        .WillOnce(Return("{0}"));
    EXPECT_CALL(*states, CallMember("ApplicationStateReadGUID",
                                    ElementsAre(Value(""), Value(""), Value("DEVELOPMENT"))))
        .WillOnce(Return("{dev}"));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
    EXPECT_CALL(data,
                Query("", 5, 1, "SELECT jobguid, jobtypeid FROM job WHERE  appstateguid <> G({dev})", true))
        .WillOnce(Return(Value()));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(data, Query("", 5, 1, "SELECT jobguid FROM job", true))
        .WillOnce(Return(Rows(1, {{"{keep}"}})));
    ExpectTrace("Removing any orphaned rows in JobItem", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("", 5, 1, "DELETE FROM JobItem WHERE jobguid NOT IN(G({keep}))"));
    ExpectTrace("Removing any orphaned rows in jobtask", 4, "RemoveOrphanedJobInformation");
    EXPECT_CALL(data, Execute("", 5, 1, "DELETE FROM jobtask WHERE jobguid NOT IN(G({keep}))"));
    ExpectTrace("How do we determine related containers", 2, "RemoveIrrelevantJobsInAllContainers");

    helper.RemoveIrrelevantJobsInAllContainers("", 5, "");

    EXPECT_EQ(made.settings, 0);
}

TEST_F(RemoveIrrelevantJobsInAllContainers, PassesOnTheRefusalOfTheQualifier) {
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier")).WillOnce(Throw(refusal));

    ExpectPassedOn([&] { SweepAll(); }, refusal, {"RemoveIrrelevantJobsInAllContainers"});
}

TEST_F(RemoveIrrelevantJobsInAllContainers, PassesOnThatAStateCannotBeRead) {
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    ExpectComponent("AppModelAdmin_%v.Admin", states);
    EXPECT_CALL(*states, CallMember("ApplicationStateReadGUID", _)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { SweepAll(); }, failure, {"RemoveIrrelevantJobsInAllContainers"});
}

TEST_F(RemoveIrrelevantJobsInAllContainers, DoesNotWarnAfterAFailedSweepWhichIsExplainedOnce) {
    InSequence inThisOrder;
    ExpectStates();
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{dev}", "DevelopmentStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guids, NullGuid()).WillOnce(Return("{0}"));
    EXPECT_CALL(data, Query("db", 5, 1, _, true)).WillOnce(Throw(failure));

    ExpectPassedOn([&] { SweepAll(); },
                   {error_number::kStatementFailed, "DataAccess",
                    "Unable to look for irrelevant jobs.\r\n\r\n[HY000] it is gone"},
                   {"RemoveIrrelevantJobsInContainer", "RemoveIrrelevantJobsInAllContainers"});
}

}  // namespace
}  // namespace kxjob

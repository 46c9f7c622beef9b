#include "lifecycle/job_creation_test.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::InSequence;
using ::testing::Return;
using ::testing::SetArgReferee;
using testing_support::JobCreationTest;

class CreateJob : public JobCreationTest {
protected:
    static auto EmptyOutputs() {
        return ::testing::AllOf(Field("first", &LongTextOutputs::first, ""),
                                Field("second", &LongTextOutputs::second, ""),
                                Field("third", &LongTextOutputs::third, ""));
    }
};

TEST_F(CreateJob, ChecksThenInsertsThenStoresTheParametersThenWritesTheHistory) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{N}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("REPORT", "JobTypeID"));
    EXPECT_CALL(guard, CheckParameter("{A}", "ApplicationStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    ExpectComponent("ApplicationSchema_%v.Schema", schema);
    EXPECT_CALL(*schema,
                CallMember("ListOfContainerSubSystems", ElementsAre(Value("db"), Value(5), Value("kx_"))))
        .WillOnce(Return(Array::List({"DESIGN", "RUNTIME", "ADMIN"})));
    EXPECT_CALL(flags, ReadFlag("db", 5, "kx_", "KVR_TRANSACTION")).WillOnce(Return(Null{}));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobtypeid, description, implprogid, notificationprogid  FROM kx_JobType"
                            " WHERE jobtypeid = G(REPORT)",
                            true))
        .WillOnce(Return(Rows(4, {{"REPORT", "Monthly reports", "Impl.Report", "Notify.Report"}})));
    ExpectTrace("Found meta data relating to Job Type 'REPORT' - Monthly reports", 4, "CreateJob");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt, lastcompletiondt,"
                            " sumoftimeincsq, appstateguid, failurenote  FROM kx_job"
                            " WHERE  jobtypeid = G(REPORT) AND  appstateguid = G({A})",
                            true))
        .WillOnce(Return(Value()));
    ExpectTrace("Creating REPORT Job {N}", 4, "CreateJob");
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "INSERT INTO kx_job (jobguid, jobtypeid, description, appstateguid,"
                              " jobstateid, totalitemcount) VALUES (V({N}), V(REPORT), V(May), V({A}),"
                              " V(CREATING), 7)"));
    EXPECT_CALL(data, WriteLongText("db", 5, 1, "kx_", "job", "jobguid", "{N}", "parameters", "<parameters/>",
                                    EmptyOutputs()))
        .WillOnce(SetArgReferee<9>(LongTextOutputs{"these", "are", "ignored"}));
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin,
                CallMember("AdminHistoryWrite",
                           ElementsAre(Value("db"), Value("kx_"), Value("JOB_CREATE"),
                                       Value("<job><jobtypeid>REPORT</jobtypeid><jobguid>{N}</jobguid>"
                                             "<appstateguid>{A}</appstateguid>"
                                             "<totalitemcount>7</totalitemcount></job>"))));

    helper.CreateJob("db", 5, "kx_", "{N}", "REPORT", "May", "{A}", "<parameters/>", 7);

    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(CreateJob, MakesOneObjectFactoryForItselfAndOneForEachOwnMethod) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({EarlierJob("{1}", "READY")});
    ExpectRemovalOf("{1}");
    ExpectInsertAndHistory();

    Create();

    EXPECT_EQ(made.objectFactories, 4);
}

TEST_F(CreateJob, RemovesEarlierJobsWhateverTheirStateInTheOrderFoundBeforeTheInsert) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs(
        {EarlierJob("{3}", "COMPLETE"), EarlierJob("{1}", "QUEUED"), EarlierJob("{2}", "RUNNING")});
    ExpectRemovalOf("{3}");
    ExpectRemovalOf("{1}");
    ExpectRemovalOf("{2}");
    ExpectInsertAndHistory();

    Create();
}

TEST_F(CreateJob, RemovesAnEarlierJobOfTheSameGuid) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({EarlierJob("{N}", "CREATING")});
    ExpectRemovalOf("{N}");
    ExpectInsertAndHistory();

    Create();
}

TEST_F(CreateJob, KeepsAnEarlierJobOfAnotherApplicationState) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({"DESIGN"}));
    ExpectJobType("db", 5, "kx_");
    ExpectTrace("Found meta data relating to Job Type 'REPORT' - Monthly reports", 4, "CreateJob");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1, ::testing::EndsWith(" AND  appstateguid = G({A})"), true))
        .WillOnce(Return(Value()));
    ExpectInsertAndHistory();

    Create();
}

TEST_F(CreateJob, StoresNoParametersWhenThereAreNone) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({});
    ExpectInsert("db", 5, "kx_");
    ExpectHistory("db", "kx_");

    helper.CreateJob("db", 5, "kx_", "{N}", "REPORT", "May", "{A}", "", 7);
}

TEST_F(CreateJob, LeavesAQuoteInTheDescriptionToTheFormatter) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({});
    ExpectTrace("Creating REPORT Job {N}", 4, "CreateJob");
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "INSERT INTO kx_job (jobguid, jobtypeid, description, appstateguid,"
                              " jobstateid, totalitemcount) VALUES (V({N}), V(REPORT), V(May's), V({A}),"
                              " V(CREATING), 7)"));
    ExpectHistory("db", "kx_");

    helper.CreateJob("db", 5, "kx_", "{N}", "REPORT", "May's", "{A}", "", 7);
}

TEST_F(CreateJob, CopiesTheJobTypeUnescapedIntoTheHistory) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("{N}", "JobGUID"));
    EXPECT_CALL(guard, CheckParameter("A<B&C", "JobTypeID"));
    EXPECT_CALL(guard, CheckParameter("{A}", "ApplicationStateGUID"));
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    ExpectSubsystems("db", 5, "kx_", Array::List({}));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobtypeid, description, implprogid, notificationprogid  FROM kx_JobType"
                            " WHERE jobtypeid = G(A<B&C)",
                            true))
        .WillOnce(Return(Rows(4, {{"A<B&C", "Odd", "Impl.Odd", "Notify.Odd"}})));
    ExpectTrace("Found meta data relating to Job Type 'A<B&C' - Odd", 4, "CreateJob");
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobguid, description, jobtypeid, parameters, jobstateid, nextjobitem,"
                            " totalitemcount, succeededitemcount, faileditemcount, startdt, lastcompletiondt,"
                            " sumoftimeincsq, appstateguid, failurenote  FROM kx_job"
                            " WHERE  jobtypeid = G(A<B&C) AND  appstateguid = G({A})",
                            true))
        .WillOnce(Return(Value()));
    ExpectTrace("Creating A<B&C Job {N}", 4, "CreateJob");
    EXPECT_CALL(data, Execute("db", 5, 1,
                              "INSERT INTO kx_job (jobguid, jobtypeid, description, appstateguid,"
                              " jobstateid, totalitemcount) VALUES (V({N}), V(A<B&C), V(May), V({A}),"
                              " V(CREATING), 1)"));
    ExpectComponent("AppModelAdmin_%v.Admin", admin);
    EXPECT_CALL(*admin, CallMember("AdminHistoryWrite",
                                   ElementsAre(Value("db"), Value("kx_"), Value("JOB_CREATE"),
                                               Value("<job><jobtypeid>A<B&C</jobtypeid><jobguid>{N}</jobguid>"
                                                     "<appstateguid>{A}</appstateguid>"
                                                     "<totalitemcount>1</totalitemcount></job>"))));

    helper.CreateJob("db", 5, "kx_", "{N}", "A<B&C", "May", "{A}", "", 1);
}

TEST_F(CreateJob, AddsNothingToTheLogLineForANullDescriptionOfTheJobType) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({}));
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(data, Query("db", 5, 1,
                            "SELECT jobtypeid, description, implprogid, notificationprogid  FROM kx_JobType"
                            " WHERE jobtypeid = G(REPORT)",
                            true))
        .WillOnce(Return(Rows(4, {{"REPORT", Null{}, "Impl.Report", Null{}}})));
    ExpectTrace("Found meta data relating to Job Type 'REPORT' - ", 4, "CreateJob");
    ExpectEarlierJobs({});
    ExpectInsertAndHistory();

    Create();
}

// The KVR flag

TEST_F(CreateJob, NeverReadsTheFlagOfAContainerWithoutRuntime) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({"DESIGN", "runtime", "RUNTIME2", ""}));
    ExpectJobTypeAndAllAfterIt();

    Create();

    EXPECT_EQ(made.flagReaders, 0);
}

TEST_F(CreateJob, TakesANullFlagAsClear) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({"RUNTIME"}));
    EXPECT_CALL(flags, ReadFlag("db", 5, "kx_", "KVR_TRANSACTION")).WillOnce(Return(Null{}));
    ExpectJobTypeAndAllAfterIt();

    Create();
}

TEST_F(CreateJob, TakesAnEmptyTextInTheFlagAsClear) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({"RUNTIME"}));
    EXPECT_CALL(flags, ReadFlag("db", 5, "kx_", "KVR_TRANSACTION")).WillOnce(Return(""));
    ExpectJobTypeAndAllAfterIt();

    Create();
}

TEST_F(CreateJob, ReadsTheFlagThroughANewReaderForEachRuntimeWhateverTheListStartsAt) {
    InSequence inThisOrder;
    ExpectGuards("kx_");
    ExpectSubsystems("db", 5, "kx_", Array::List({"RUNTIME", "DESIGN", "RUNTIME"}, 1));
    EXPECT_CALL(flags, ReadFlag("db", 5, "kx_", "KVR_TRANSACTION")).Times(2).WillRepeatedly(Return(""));
    ExpectJobTypeAndAllAfterIt();

    Create();

    EXPECT_EQ(made.flagReaders, 2);
}

// The configuration

TEST_F(CreateJob, AsksForNoConfigurationWhenConnectionAndQualifierAreGiven) {
    InSequence inThisOrder;
    ExpectUntilEarlierJobs();
    ExpectEarlierJobs({});
    ExpectInsertAndHistory();

    Create();

    EXPECT_EQ(made.settings, 0);
}

TEST_F(CreateJob, TakesAllThreeFromTheConfigurationWithoutAConnectionString) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectRoadOn("cfg-db", 3, "cfg_");

    helper.CreateJob("", 5, "kx_", "{N}", "REPORT", "May", "{A}", "", 7);
}

TEST_F(CreateJob, TakesAllThreeFromTheConfigurationWithoutAQualifier) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectRoadOn("cfg-db", 3, "cfg_");

    helper.CreateJob("db", 5, "", "{N}", "REPORT", "May", "{A}", "", 7);
}

TEST_F(CreateJob, StoresTheParametersWhereTheConfigurationSays) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "cfg_");
    ExpectGuards("cfg_");
    ExpectSubsystems("cfg-db", 3, "cfg_", Array::List({"RUNTIME"}));
    EXPECT_CALL(flags, ReadFlag("cfg-db", 3, "cfg_", "KVR_TRANSACTION")).WillOnce(Return(""));
    ExpectJobType("cfg-db", 3, "cfg_");
    ExpectTrace("Found meta data relating to Job Type 'REPORT' - Monthly reports", 4, "CreateJob");
    ExpectNoEarlierJobs("cfg-db", 3, "cfg_");
    ExpectInsert("cfg-db", 3, "cfg_");
    EXPECT_CALL(data, WriteLongText("cfg-db", 3, 1, "cfg_", "job", "jobguid", "{N}", "parameters", "<p/>",
                                    EmptyOutputs()));
    ExpectHistory("cfg-db", "cfg_");

    helper.CreateJob("", 5, "", "{N}", "REPORT", "May", "{A}", "<p/>", 7);
}

TEST_F(CreateJob, HasGetJobAskTheConfigurationAgainWhenThatGivesNoQualifier) {
    InSequence inThisOrder;
    ExpectConfiguration("cfg-db", 3, "");
    ExpectGuards("");
    ExpectSubsystems("cfg-db", 3, "", Array::List({}));
    ExpectJobType("cfg-db", 3, "");
    ExpectTrace("Found meta data relating to Job Type 'REPORT' - Monthly reports", 4, "CreateJob");
    EXPECT_CALL(settings, ADOConnectionString()).WillOnce(Return("cfg-db"));
    EXPECT_CALL(settings, Provider()).WillOnce(Return(3));
    EXPECT_CALL(settings, NameSpaceQualifier()).WillOnce(Return(""));
    ExpectNoEarlierJobs("cfg-db", 3, "");
    ExpectInsert("cfg-db", 3, "");
    ExpectHistory("cfg-db", "");

    helper.CreateJob("", 5, "", "{N}", "REPORT", "May", "{A}", "", 7);
}

}  // namespace
}  // namespace kxjob

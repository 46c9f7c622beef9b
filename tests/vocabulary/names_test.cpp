#include <type_traits>

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::DoAll;
using ::testing::Return;
using ::testing::SaveArg;
using ::testing::Throw;
using testing_support::JobHelperTest;

class Version : public JobHelperTest {};

TEST_F(Version, IsTheTextThatTheTraceLogMakesOfTheApplication) {
    EXPECT_CALL(trace, VersionOf).WillOnce(Return("v8 (rev 1202) "));

    EXPECT_EQ(helper.Version(), "v8 (rev 1202) ");
    EXPECT_EQ(made.objectFactories, 0);
}

TEST_F(Version, GivesTheTraceLogTheNameAndTheNumbersOfTheComponent) {
    ComponentRef application;
    EXPECT_CALL(trace, VersionOf).WillOnce(DoAll(SaveArg<0>(&application), Return("8.3.1202.0")));

    helper.Version();

    ASSERT_NE(application, nullptr);
    EXPECT_EQ(application->Get("Title"), Value("Job_83"));
    EXPECT_EQ(application->Get("Major"), Value(8));
    EXPECT_EQ(application->Get("Minor"), Value(3));
    EXPECT_EQ(application->Get("Revision"), Value(1202));
}

TEST_F(Version, PassesOnWhatTheTraceLogRaises) {
    const AutomationError failure(-5, "The log", "no version");
    EXPECT_CALL(trace, VersionOf).WillOnce(Throw(failure));

    ExpectPassedOn([&] { helper.Version(); }, failure, {"Version"});
}

class TagNames : public JobHelperTest {};

TEST_F(TagNames, AreTheSameOnEveryCallAndTouchNothing) {
    for (int call = 0; call < 3; ++call) {
        EXPECT_EQ(helper.ParametersTagName(), "parameters");
        EXPECT_EQ(helper.ParameterTagName(), "parameter");
    }

    EXPECT_EQ(made.objectFactories, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

template <typename Enumeration>
constexpr bool kIsSigned32Bit = std::is_same_v<std::underlying_type_t<Enumeration>, std::int32_t>;

TEST(FieldIndexes, AreSigned32BitNumbers) {
    EXPECT_TRUE(kIsSigned32Bit<Enums::StatisticsFields>);
    EXPECT_TRUE(kIsSigned32Bit<Enums::JobInformationFields>);
    EXPECT_TRUE(kIsSigned32Bit<Enums::JobTypeInformationFields>);
    EXPECT_TRUE(kIsSigned32Bit<Enums::JobItemInformationFields>);
    EXPECT_TRUE(kIsSigned32Bit<Enums::JobTaskFields>);
}

TEST(FieldIndexes, OfStatisticsEndWithTheNoteAndTheApplicationState) {
    EXPECT_EQ(Enums::StatisticsFields::sfJobGUID, 0);
    EXPECT_EQ(Enums::StatisticsFields::sfDescription, 1);
    EXPECT_EQ(Enums::StatisticsFields::sfJobType, 2);
    EXPECT_EQ(Enums::StatisticsFields::sfJobState, 3);
    EXPECT_EQ(Enums::StatisticsFields::sfNextItem, 4);
    EXPECT_EQ(Enums::StatisticsFields::sfTotalItemCount, 5);
    EXPECT_EQ(Enums::StatisticsFields::sfSucceededItemCount, 6);
    EXPECT_EQ(Enums::StatisticsFields::sfFailedItemCount, 7);
    EXPECT_EQ(Enums::StatisticsFields::sfStartDateTime, 8);
    EXPECT_EQ(Enums::StatisticsFields::sfLastCompletedDateTime, 9);
    EXPECT_EQ(Enums::StatisticsFields::sfSumOfTimeIncrementsSquared, 10);
    EXPECT_EQ(Enums::StatisticsFields::sfFailureNote, 11);
    EXPECT_EQ(Enums::StatisticsFields::sfAppStateGUID, 12);
}

TEST(FieldIndexes, OfJobsHaveTheParametersAndEndWithTheNote) {
    EXPECT_EQ(Enums::JobInformationFields::jifJobGUID, 0);
    EXPECT_EQ(Enums::JobInformationFields::jifDescription, 1);
    EXPECT_EQ(Enums::JobInformationFields::jifJobType, 2);
    EXPECT_EQ(Enums::JobInformationFields::jifParameters, 3);
    EXPECT_EQ(Enums::JobInformationFields::jifJobState, 4);
    EXPECT_EQ(Enums::JobInformationFields::jifNextItem, 5);
    EXPECT_EQ(Enums::JobInformationFields::jifTotalItemCount, 6);
    EXPECT_EQ(Enums::JobInformationFields::jifSucceededItemCount, 7);
    EXPECT_EQ(Enums::JobInformationFields::jifFailedItemCount, 8);
    EXPECT_EQ(Enums::JobInformationFields::jifStartDateTime, 9);
    EXPECT_EQ(Enums::JobInformationFields::jifLastCompletedDateTime, 10);
    EXPECT_EQ(Enums::JobInformationFields::jifSumOfTimeIncrementsSquared, 11);
    EXPECT_EQ(Enums::JobInformationFields::jifApplicationDefinitionGUID, 12);
    EXPECT_EQ(Enums::JobInformationFields::jifFailureNote, 13);
}

TEST(FieldIndexes, OfJobTypesEndWithTheTwoComponents) {
    EXPECT_EQ(Enums::JobTypeInformationFields::jtifJobType, 0);
    EXPECT_EQ(Enums::JobTypeInformationFields::jtifDescription, 1);
    EXPECT_EQ(Enums::JobTypeInformationFields::jtifComponentInstantiationString, 2);
    EXPECT_EQ(Enums::JobTypeInformationFields::jtifNotificationComponentInstantiationString, 3);
}

TEST(FieldIndexes, OfJobItemsKeepTheirPublishedSpelling) {
    EXPECT_EQ(Enums::JobItemInformationFields::jiifIdentifier, 0);
    EXPECT_EQ(Enums::JobItemInformationFields::jiifJobItemState, 1);
    EXPECT_EQ(Enums::JobItemInformationFields::jiifData, 2);
    EXPECT_EQ(Enums::JobItemInformationFields::jiifStartDate, 3);
    EXPECT_EQ(Enums::JobItemInformationFields::jiifEndDate, 4);
    EXPECT_EQ(Enums::JobItemInformationFields::jiifJobItemGUID, 5);
    EXPECT_EQ(Enums::JobItemInformationFields::jiifFaliureNote, 6);  // sic
}

TEST(FieldIndexes, OfJobTasksEndWithTheLock) {
    EXPECT_EQ(Enums::JobTaskFields::jtfJobTaskGUID, 0);
    EXPECT_EQ(Enums::JobTaskFields::jtfDescription, 1);
    EXPECT_EQ(Enums::JobTaskFields::jtfJobGUID, 2);
    EXPECT_EQ(Enums::JobTaskFields::jtfMachine, 3);
    EXPECT_EQ(Enums::JobTaskFields::jtfProcessID, 4);
    EXPECT_EQ(Enums::JobTaskFields::jtfThreadID, 5);
    EXPECT_EQ(Enums::JobTaskFields::jtfLastJobItem, 6);
    EXPECT_EQ(Enums::JobTaskFields::jtfCommand, 7);
    EXPECT_EQ(Enums::JobTaskFields::jtfUser, 8);
    EXPECT_EQ(Enums::JobTaskFields::jtfJobTaskStateID, 9);
    EXPECT_EQ(Enums::JobTaskFields::jtfStartDateTime, 10);
    EXPECT_EQ(Enums::JobTaskFields::jtfEndDateTime, 11);
    EXPECT_EQ(Enums::JobTaskFields::jtfLockGUID, 12);
}

}  // namespace
}  // namespace kxjob

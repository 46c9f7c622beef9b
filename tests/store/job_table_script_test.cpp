#include "support/job_helper_test.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using ::testing::Ref;
using ::testing::Return;
using ::testing::Throw;
using testing_support::JobHelperTest;
using testing_support::kFailure;

class JobTableCreationScript : public JobHelperTest {
protected:
    Collection options;
};

TEST_F(JobTableCreationScript, GivesTheScriptOfTheProviderUnchanged) {
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(scripts, GetScript(Ref(options), 5, "kx_", "JobTablesDDL", true))
        .WillOnce(Return(" CREATE TABLE kx_job (x);\r\n "));

    EXPECT_EQ(helper.JobTableCreationScript(options, 5, "kx_"), " CREATE TABLE kx_job (x);\r\n ");
    EXPECT_EQ(made.objectFactories, 0);
    EXPECT_TRUE(debugTools->told.empty());
}

TEST_F(JobTableCreationScript, HandsOnAnyProviderAndAnEmptyQualifier) {
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("", "NameQualifier"));
    EXPECT_CALL(scripts, GetScript(Ref(options), -7, "", "JobTablesDDL", true)).WillOnce(Return(""));

    EXPECT_EQ(helper.JobTableCreationScript(options, -7, ""), "");
    EXPECT_EQ(made.settings, 0);
}

TEST_F(JobTableCreationScript, LeavesTheOptionsAsTheyAre) {
    options.Add("utf8", "charset");
    EXPECT_CALL(guard, CheckParameter);
    EXPECT_CALL(scripts, GetScript)
        .WillOnce([&](Collection& given, DataStoreProvider, const std::string&, const std::string&, bool) {
            EXPECT_EQ(&given, &options);
            EXPECT_EQ(given.Count(), 1U);
            return std::string("script");
        });

    helper.JobTableCreationScript(options, 2, "kx_");

    EXPECT_EQ(options.Count(), 1U);
    EXPECT_EQ(options.Item("charset"), Value("utf8"));
}

TEST_F(JobTableCreationScript, LetsTheScriptLibraryChangeTheCallersOptions) {
    EXPECT_CALL(guard, CheckParameter);
    EXPECT_CALL(scripts, GetScript)
        .WillOnce([](Collection& given, DataStoreProvider, const std::string&, const std::string&, bool) {
            given.Add("seen", "by the library");
            return std::string("script");
        });

    helper.JobTableCreationScript(options, 2, "kx_");

    EXPECT_TRUE(options.Exists("by the library"));
}

TEST_F(JobTableCreationScript, StopsAtARefusedQualifier) {
    EXPECT_CALL(guard, CheckParameter("kx;", "NameQualifier")).WillOnce(Throw(kFailure));

    ExpectPassedOn([&] { helper.JobTableCreationScript(options, 2, "kx;"); }, kFailure,
                   {"JobTableCreationScript"});
}

TEST_F(JobTableCreationScript, PassesOnThatThereIsNoScript) {
    InSequence inThisOrder;
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(scripts, GetScript).WillOnce(Throw(kFailure));

    ExpectPassedOn([&] { helper.JobTableCreationScript(options, 1, "kx_"); }, kFailure,
                   {"JobTableCreationScript"});
}

}  // namespace
}  // namespace kxjob

#include "support/job_helper_test.h"

namespace kxjob {
namespace {

using ::testing::InSequence;
using testing_support::JobHelperTest;

class UpdateTaskRegistration : public JobHelperTest {};

TEST_F(UpdateTaskRegistration, WritesTheItemBeforeTheState) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    ExpectTrace("Job Task {T} is updating state to RUNNING", 4, "UpdateTaskRegistration");
    EXPECT_CALL(data, Execute("db", 2, 1,
                              "UPDATE kx_jobtask SET lastjobitem = V(i7), jobtaskstateid = V(RUNNING)"
                              " WHERE jobtaskguid = G({T})"));

    helper.UpdateTaskRegistration("db", "kx_", "{T}", "i7", "RUNNING");
}

TEST_F(UpdateTaskRegistration, RefusesAnUpdateOfNothingAfterItsTraceLine) {
    InSequence inThisOrder;
    ExpectTableNames();
    EXPECT_CALL(guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(guard, CheckParameter("{T}", "JobTaskGUID"));
    ExpectTrace("Job Task {T} is updating state to ", 4, "UpdateTaskRegistration");

    ExpectOwnError([&] { helper.UpdateTaskRegistration("db", "kx_", "{T}", "", ""); }, 747,
                   "UpdateTaskRegistration", "No update specified", {"UpdateTaskRegistration"});
}

}  // namespace
}  // namespace kxjob

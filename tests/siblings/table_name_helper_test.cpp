#include "siblings/table_name_helper.h"

#include <gtest/gtest.h>

#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

TEST(TableNameHelper, GivesTheBaseNames) {
    TableNameHelper names;
    EXPECT_EQ(names.Get("job"), Value("job"));
    EXPECT_EQ(names.Get("JobItem"), Value("JobItem"));
    EXPECT_EQ(names.Get("jobtask"), Value("jobtask"));
    EXPECT_EQ(names.Get("JobType"), Value("JobType"));
}

TEST(TableNameHelper, HasNoOtherProperty) {
    TableNameHelper names;
    EXPECT_EQ(testing_support::ErrorOf([&] { names.Get("jobs"); }).Number(), error_number::kUnknownMember);
}

}  // namespace
}  // namespace kxjob

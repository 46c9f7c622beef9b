#include "siblings/application_schema.h"

#include <gtest/gtest.h>

#include "kxjob/array.h"
#include "kxjob/automation_error.h"
#include "siblings/container.h"

namespace kxjob {
namespace {

using testing_support::Call;
using testing_support::Container;
using testing_support::ErrorOf;

class ApplicationSchemaTest : public testing::Test {
protected:
    Value List(const std::string& qualifier) {
        return Call(schema_, "ListOfContainerSubSystems", {container_.ConnectionString(), 5, qualifier});
    }

    Container container_;
    ApplicationSchema schema_{container_.Sessions()};
};

TEST_F(ApplicationSchemaTest, ListsTheSubsystemsOfTheContainer) {
    container_.Execute("CREATE TABLE kx_subsystem (subsystemid text)");
    container_.Execute("INSERT INTO kx_subsystem VALUES ('RUNTIME'), ('DESIGN')");
    EXPECT_EQ(List("kx_"), Value(Array::List({"DESIGN", "RUNTIME"})));
}

TEST_F(ApplicationSchemaTest, ListsNoneWithoutTableOrRows) {
    EXPECT_EQ(List("kx_"), Value(Array::List({})));
    container_.Execute("CREATE TABLE kx_subsystem (subsystemid text)");
    EXPECT_EQ(List("kx_"), Value(Array::List({})));
}

TEST_F(ApplicationSchemaTest, HandsOnEveryOtherError) {
    container_.Execute("CREATE TABLE kx_subsystem (other text)");
    EXPECT_EQ(ErrorOf([&] { List("kx_"); }).Number(), error_number::kStatementFailed);
}

TEST_F(ApplicationSchemaTest, RefusesAnUnsafeQualifier) {
    EXPECT_EQ(ErrorOf([&] { List("x; DROP TABLE "); }).Number(), error_number::kGuardRefusal);
}

TEST_F(ApplicationSchemaTest, HasOneMemberOfThreeArguments) {
    EXPECT_EQ(ErrorOf([&] { Call(schema_, "ListOfContainerSubSystems", {}); }).Number(),
              error_number::kWrongArgumentCount);
    EXPECT_EQ(ErrorOf([&] { Call(schema_, "Other", {}); }).Number(), error_number::kUnknownMember);
}

}  // namespace
}  // namespace kxjob

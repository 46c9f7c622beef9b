#include "siblings/debug_tools.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "siblings/container.h"

namespace kxjob {
namespace {

using testing::Eq;
using testing::StrictMock;
using testing_support::Call;
using testing_support::ErrorOf;

class MockLog : public TraceLog {
public:
    MOCK_METHOD(void, Write,
                (const std::string&, std::int32_t&, const std::string&, const std::string&,
                 const std::string&),
                (override));
    MOCK_METHOD(std::string, VersionOf, (const ComponentRef&), (override));
};

class PendingError : public Component {
public:
    std::string Name() const override { return "ErrObject"; }
    Value Get(std::string_view property) override {
        if (property == "Number") return static_cast<std::int32_t>(0x80040000U + 743);
        if (property == "Source") return "Job_83.JobHelper.IsJobComplete";
        if (property == "Description") return "Unknown state";
        return Component::Get(property);
    }
};

class DebugToolsTest : public testing::Test {
protected:
    std::shared_ptr<StrictMock<MockLog>> log_ = std::make_shared<StrictMock<MockLog>>();
    DebugTools tools_{log_};
};

TEST_F(DebugToolsTest, LogsTheErrorAndRaisesItAgain) {
    EXPECT_CALL(
        *log_, Write("Error -2147220761 from Job_83.JobHelper.IsJobComplete at line 41: Unknown state", Eq(1),
                     "Job_83", "JobHelper", "IsJobComplete"));
    const AutomationError error = ErrorOf([&] {
        Call(tools_, "LogAndReRaiseVBError",
             {ComponentRef(std::make_shared<PendingError>()), ComponentRef(), 41, "Job_83", "JobHelper",
              "IsJobComplete"});
    });
    EXPECT_EQ(error.Number(), -2147220761);
    EXPECT_EQ(error.Source(), "Job_83.JobHelper.IsJobComplete");
    EXPECT_EQ(error.Description(), "Unknown state");
    EXPECT_EQ(error.Line(), 41);
}

TEST_F(DebugToolsTest, NeedsAnError) {
    EXPECT_EQ(ErrorOf([&] {
                  Call(tools_, "LogAndReRaiseVBError", {ComponentRef(), ComponentRef(), 1, "", "", ""});
              }).Number(),
              error_number::kObjectNotSet);
}

TEST_F(DebugToolsTest, HasOneMemberOfSixArguments) {
    EXPECT_EQ(ErrorOf([&] { Call(tools_, "LogAndReRaiseVBError", {}); }).Number(),
              error_number::kWrongArgumentCount);
    EXPECT_EQ(ErrorOf([&] { Call(tools_, "Other", {}); }).Number(), error_number::kUnknownMember);
}

}  // namespace
}  // namespace kxjob

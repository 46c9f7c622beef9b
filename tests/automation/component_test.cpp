#include "kxjob/component.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "kxjob/automation_error.h"
#include "kxjob/value.h"
#include "support/raised_error.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;
using testing_support::kUnknownMember;
using testing_support::kWrongArgumentCount;

class Nothing : public Component {
public:
    std::string Name() const override { return "Test_83.Nothing"; }
};

/// Has one method of two arguments.
class Adder : public Component {
public:
    std::string Name() const override { return "Test_83.Adder"; }
    Value Call(std::string_view method, std::span<const Value> arguments) override {
        if (method != "Add") return Component::Call(method, arguments);
        RequireArguments(method, arguments, 2);
        return arguments[0].ToInt32() + arguments[1].ToInt32();
    }
};

void ExpectUnknown(const AutomationError& error, const std::string& member) {
    EXPECT_EQ(error.Number(), kUnknownMember);
    EXPECT_NE(error.Description().find(member), std::string::npos) << error.Description();
}

TEST(Component, HasNoMembersOfItsOwn) {
    Nothing nothing;
    ExpectUnknown(ErrorOf([&] { nothing.Get("Size"); }), "Test_83.Nothing.Size");
    ExpectUnknown(ErrorOf([&] { nothing.Let("Colour", "red"); }), "Test_83.Nothing.Colour");
    ExpectUnknown(ErrorOf([&] { nothing.Call("Run", {}); }), "Test_83.Nothing.Run");
}

TEST(Component, AnswersWhatItOverridesAndRefusesTheRest) {
    Adder adder;
    EXPECT_EQ(adder.Call("Add", std::array<Value, 2>{2, 3}), Value(5));
    ExpectUnknown(ErrorOf([&] { adder.Call("add", std::array<Value, 2>{2, 3}); }), "Test_83.Adder.add");
}

TEST(Component, RefusesAWrongNumberOfArgumentsAndSaysWhich) {
    Adder adder;
    for (const std::vector<Value>& arguments :
         {std::vector<Value>{}, std::vector<Value>{1}, std::vector<Value>{1, 2, 3}}) {
        const AutomationError error = ErrorOf([&] { adder.Call("Add", arguments); });
        EXPECT_EQ(error.Number(), kWrongArgumentCount);
        EXPECT_EQ(error.Description(), "Wrong number of arguments: Test_83.Adder.Add takes 2, not " +
                                           std::to_string(arguments.size()));
    }
}

}  // namespace
}  // namespace kxjob

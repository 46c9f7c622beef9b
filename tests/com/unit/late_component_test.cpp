#include "com/late/late_component.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "com/late/client_collection.h"
#include "com/late/component_dispatch.h"
#include "com/support/script_call.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using testing_support::CallByName;
using testing_support::Number;
using testing_support::Text;

/// Keeps what it is told, and fails when asked to.
class Notebook : public Component {
public:
    std::string Name() const override { return "Notebook"; }
    Value Get(std::string_view property) override {
        if (property == "Last") return last_;
        return Component::Get(property);
    }
    void Let(std::string_view property, const Value& value) override {
        if (property != "Last") RaiseUnknownMember(property);
        last_ = value;
    }
    Value Call(std::string_view method, std::span<const Value> arguments) override {
        if (method == "Fail") throw AutomationError(-7000, "Notebook.Fail", "\xC3\xA4 \xF0\x9F\x98\x80");
        if (method == "FailPlainly") throw AutomationError(5, "Notebook", "runtime error");
        if (method != "Write") RaiseUnknownMember(method);
        arguments_.assign(arguments.begin(), arguments.end());
        return static_cast<std::int32_t>(arguments.size());
    }

    const std::vector<Value>& Arguments() const { return arguments_; }

private:
    Value last_;
    std::vector<Value> arguments_;
};

/// The same, but says which members it has.
class OpenNotebook : public Notebook {
public:
    std::span<const std::string_view> MemberNames() const override {
        static constexpr std::array<std::string_view, 4> kNames = {"Last", "Write", "Fail", "FailPlainly"};
        return kNames;
    }
};

class LateBinding : public testing::Test {
protected:
    std::shared_ptr<OpenNotebook> notebook_ = std::make_shared<OpenNotebook>();
    ComPointer<IDispatch> object_ = MakeComponentDispatch(notebook_);
    LateComponent late_{object_, "Notebook"};
};

AutomationError ErrorFrom(const std::function<void()>& action) {
    try {
        action();
    } catch (const AutomationError& error) {
        return error;
    }
    return {0, "", "no error"};
}

TEST_F(LateBinding, ReadsAndSetsProperties) {
    late_.Let("Last", Value("page"));
    EXPECT_EQ(late_.Get("Last"), Value("page"));
}

TEST_F(LateBinding, PassesArgumentsInTheirOrder) {
    const std::vector<Value> arguments = {Value("first"), Value(2), Value(true)};
    EXPECT_EQ(late_.Call("Write", arguments), Value(3));
    EXPECT_EQ(notebook_->Arguments(), arguments);
}

TEST_F(LateBinding, PassesObjectsWithoutWrappingThemAgain) {
    const auto inner = std::make_shared<LateComponent>(object_, "Notebook");
    late_.Let("Last", Value(ComponentRef(inner)));
    const ComPointer<IDispatch> kept = DispatchOf(notebook_->Get("Last").Object());
    EXPECT_EQ(kept.Get(), object_.Get());
}

TEST_F(LateBinding, KeepsNumberSourceAndDescriptionOfAnError) {
    const AutomationError error = ErrorFrom([&] { late_.Call("Fail", {}); });
    EXPECT_EQ(error.Number(), -7000);
    EXPECT_EQ(error.Source(), "Notebook.Fail");
    EXPECT_EQ(error.Description(), "\xC3\xA4 \xF0\x9F\x98\x80");
}

TEST_F(LateBinding, TurnsPlainRuntimeNumbersIntoStatuses) {
    const AutomationError error = ErrorFrom([&] { late_.Call("FailPlainly", {}); });
    EXPECT_EQ(error.Number(), error_number::kInvalidCall);
    EXPECT_EQ(error.Description(), "runtime error");
}

TEST_F(LateBinding, RefusesUnknownMembersByName) {
    const AutomationError error = ErrorFrom([&] { late_.Call("Burn", {}); });
    EXPECT_EQ(error.Number(), error_number::kUnknownMember);
    EXPECT_NE(error.Description().find("Notebook.Burn"), std::string::npos);
}

TEST_F(LateBinding, DoesNotMindLetterCase) {
    EXPECT_EQ(CallByName(*object_.Get(), L"wRITE", {Number(1)}).status, S_OK);
    EXPECT_EQ(notebook_->Arguments(), std::vector<Value>{Value(1)});
}

TEST_F(LateBinding, OfAComponentThatTellsNoNamesFindsMembersWhenCalled) {
    const ComPointer<IDispatch> object = MakeComponentDispatch(std::make_shared<Notebook>());
    EXPECT_EQ(CallByName(*object.Get(), L"Write", {}).status, S_OK);
    EXPECT_EQ(CallByName(*object.Get(), L"Burn", {}).status, DISP_E_MEMBERNOTFOUND);
}

TEST_F(LateBinding, TakesNoNamedArguments) {
    EXPECT_EQ(CallByName(*object_.Get(), L"Write", {Number(1)}, {L"Page"}).status, DISP_E_UNKNOWNNAME);
}

TEST_F(LateBinding, RefusesCallsThatMakeNoSense) {
    DISPPARAMS none{};
    EXPECT_EQ(object_->Invoke(0, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object_->Invoke(99, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object_->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              E_INVALIDARG);
    DISPPARAMS hollow{nullptr, nullptr, 3, 0};
    EXPECT_EQ(object_->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &hollow, nullptr, nullptr, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(object_->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYPUT, &none, nullptr, nullptr, nullptr),
              DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBinding, LeavesNoErrorBehindForACallerWhoDoesNotAsk) {
    DISPPARAMS none{};
    DISPID id = 0;
    wchar_t name[] = L"Fail";
    wchar_t* names = name;
    ASSERT_EQ(object_->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK);
    EXPECT_EQ(object_->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_EXCEPTION);
    ComPointer<IErrorInfo> left;
    EXPECT_EQ(GetErrorInfo(0, left.ReceiveTyped()), S_FALSE);
}

TEST(ClientCollection, IsTheClientsOwn) {
    auto theirs = std::make_shared<Collection>();
    theirs->Add(Value("v"), "key");
    ClientCollection collection(MakeComponentDispatch(theirs));
    EXPECT_EQ(collection.Get("Count"), Value(1));
    EXPECT_EQ(collection.Call("Item", std::vector<Value>{Value("KEY")}), Value("v"));
}

TEST(ClientCollection, MayBeNone) {
    ClientCollection collection{ComPointer<IDispatch>()};
    EXPECT_EQ(collection.Get("Count"), Value(0));
}

}  // namespace
}  // namespace kxjob

#include <gtest/gtest.h>

#include <string>

#include "com/support/apartment.h"
#include "com/support/script_call.h"

namespace kxjob {
namespace {

using testing_support::Apartment;
using testing_support::Boolean;
using testing_support::CallByName;
using testing_support::Missing;
using testing_support::NewObject;
using testing_support::Number;
using testing_support::Outcome;
using testing_support::Real;
using testing_support::Reference;
using testing_support::Text;

/// What leaves the library before a store is needed is enough to see how arguments arrive.
constexpr HRESULT kUnknownJobState = static_cast<HRESULT>(0x80040000U + 743);
constexpr HRESULT kNothingToUpdate = static_cast<HRESULT>(0x80040000U + 747);
constexpr HRESULT kNoArray = static_cast<HRESULT>(0x80040000U + 749);
constexpr HRESULT kGuardRefusal = static_cast<HRESULT>(0x80040000U + 701);

class LateBoundJobHelper : public testing::Test {
protected:
    Outcome Call(const wchar_t* member, std::vector<VARIANT> arguments,
                 std::vector<const wchar_t*> names = {}) {
        return CallByName(*helper_.Get(), member, std::move(arguments), std::move(names));
    }

    Apartment apartment_;
    ComPointer<IDispatch> helper_ = NewObject(L"Job_83.JobHelper");
};

TEST_F(LateBoundJobHelper, AnswersByName) {
    const Outcome outcome = Call(L"Version", {});
    ASSERT_EQ(outcome.status, S_OK);
    EXPECT_EQ(TextOf(outcome.result->bstrVal), "8.3.1202.0");
}

TEST_F(LateBoundJobHelper, GivesBooleansAsSuch) {
    const Outcome outcome = Call(L"isjobcomplete", {Text("CANCELLED")});
    ASSERT_EQ(outcome.status, S_OK);
    EXPECT_EQ(outcome.result->vt, VT_BOOL);
    EXPECT_EQ(outcome.result->boolVal, VARIANT_TRUE);
}

TEST_F(LateBoundJobHelper, ErrorsKeepNumberSourceAndDescription) {
    const Outcome outcome = Call(L"IsJobComplete", {Text("done\xC3\x9F")});
    ASSERT_EQ(outcome.status, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.number, kUnknownJobState);
    EXPECT_EQ(outcome.source, "Job_83.JobHelper.IsJobComplete");
    EXPECT_EQ(outcome.description, "The Job StateID 'done\xC3\x9F' is not known");
}

TEST_F(LateBoundJobHelper, TakesNumbersForTexts) {
    const Outcome outcome = Call(L"IsJobComplete", {Number(42)});
    EXPECT_EQ(outcome.description, "The Job StateID '42' is not known");
}

TEST_F(LateBoundJobHelper, TakesEmptyForTheEmptyText) {
    VARIANT empty{};
    EXPECT_EQ(Call(L"IsJobComplete", {empty}).description, "The Job StateID '' is not known");
}

TEST_F(LateBoundJobHelper, TakesNoNullForAText) {
    VARIANT null{};
    null.vt = VT_NULL;
    const Outcome outcome = Call(L"IsJobComplete", {null});
    EXPECT_EQ(outcome.status, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 0U);
}

TEST_F(LateBoundJobHelper, TakesTextsForNumbers) {
    // -1 items is refused by its own error: the number was understood.
    const Outcome outcome = Call(L"CreateJob", {Text("c"), Text("5"), Text("q_"), Text("{G}"), Text("T"),
                                                Text(""), Text("{A}"), Text(""), Text("-1")});
    EXPECT_EQ(outcome.number, static_cast<HRESULT>(0x80040000U + 1433));
}

TEST_F(LateBoundJobHelper, RefusesATextThatIsNoNumber) {
    const Outcome outcome = Call(L"CreateJob", {Text("c"), Number(5), Text("q_"), Text("{G}"), Text("T"),
                                                Text(""), Text("{A}"), Text(""), Text("many")});
    EXPECT_EQ(outcome.status, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.badArgument, 0U) << "the last argument is the first in the list";
}

TEST_F(LateBoundJobHelper, RefusesANumberThatDoesNotFit) {
    const Outcome outcome = Call(L"CreateJob", {Text("c"), Number(5), Text("q_"), Text("{G}"), Text("T"),
                                                Text(""), Text("{A}"), Text(""), Real(1e12)});
    EXPECT_EQ(outcome.status, DISP_E_OVERFLOW);
}

TEST_F(LateBoundJobHelper, FollowsAScriptsVariables) {
    VARIANT variable = Text("COMPLETE");
    const Outcome outcome = Call(L"IsJobComplete", {Reference(variable)});
    ASSERT_EQ(outcome.status, S_OK);
    EXPECT_EQ(outcome.result->boolVal, VARIANT_TRUE);
}

TEST_F(LateBoundJobHelper, TakesArgumentsByTheirNames) {
    const Outcome outcome =
        Call(L"UpdateTaskRegistration", {Text("c"), Text(""), Text(""), Text("{T}"), Text("q_")},
             {L"JobTaskStateID", L"LastJobItem", L"JobTaskGUID", L"NameQualifier"});
    EXPECT_EQ(outcome.number, kNothingToUpdate);
}

TEST_F(LateBoundJobHelper, TakesTheMisspelledNameThatIsPublished) {
    const Outcome outcome = Call(L"RemoveJobAndItems", {Text("c"), Number(5), Text("{G}"), Text("it's")},
                                 {L"JobGUID", L"NameQualfier"});
    EXPECT_EQ(outcome.number, kGuardRefusal);
    EXPECT_NE(outcome.description.find("NameQualfier"), std::string::npos) << outcome.description;
}

TEST_F(LateBoundJobHelper, RefusesANameTwice) {
    const Outcome outcome = Call(L"IsJobComplete", {Text("a"), Text("b")}, {L"StateId"});
    EXPECT_EQ(outcome.status, DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBoundJobHelper, RefusesUnknownNames) {
    EXPECT_EQ(Call(L"IsJobComplete", {Text("a")}, {L"State"}).status, DISP_E_UNKNOWNNAME);
    EXPECT_EQ(Call(L"IsJobDone", {Text("a")}).status, DISP_E_UNKNOWNNAME);
}

TEST_F(LateBoundJobHelper, RefusesTooManyArguments) {
    EXPECT_EQ(Call(L"IsJobComplete", {Text("a"), Text("b")}).status, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Call(L"Version", {Text("a")}).status, DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBoundJobHelper, RefusesTooFewArguments) {
    EXPECT_EQ(Call(L"IsJobComplete", {}).status, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Call(L"IsJobComplete", {Missing()}).status, DISP_E_PARAMNOTOPTIONAL);
}

TEST_F(LateBoundJobHelper, LetsOptionalArgumentsBeLeftOut) {
    // What is asked goes as far as the store, which is not there.
    const HRESULT noStore = static_cast<HRESULT>(0x80040000U + 704);
    EXPECT_EQ(Call(L"GetJob", {Text("Driver=None"), Number(5), Text("q_")}).number, noStore);
    EXPECT_EQ(
        Call(L"GetJob", {Text("Driver=None"), Number(5), Text("q_"), Missing(), Missing(), Text("X")}).number,
        noStore);
    VARIANT state = Text("{S}");
    EXPECT_EQ(Call(L"GetJob", {Text("Driver=None"), Number(5), Text("q_"), Missing(), Missing(), Missing(),
                               Reference(state)})
                  .number,
              noStore);
    EXPECT_EQ(TextOf(state.bstrVal), "{S}");
    EXPECT_EQ(Call(L"JobItemsAtState", {Text("Driver=None"), Text("q_"), Text("{J}")}).number, noStore);
}

TEST_F(LateBoundJobHelper, LeavesAVariableAloneThatAMethodDoesNotChange) {
    VARIANT jobGuid{};  // Empty: GetNextJob sees the empty text
    VARIANT rank = Number(3);
    const Outcome outcome = Call(
        L"GetNextJob", {Text("Driver=None"), Number(5), Text("q_"), Reference(jobGuid), Reference(rank)});
    ASSERT_EQ(outcome.status, DISP_E_EXCEPTION);
    EXPECT_EQ(jobGuid.vt, VT_EMPTY);
    EXPECT_EQ(rank.vt, VT_I4);
}

TEST_F(LateBoundJobHelper, TakesNoObjectForAnArray) {
    VARIANT object{};
    object.vt = VT_DISPATCH;
    object.pdispVal = helper_.Get();
    EXPECT_EQ(Call(L"CreateSimpleJobItems", {Text("c"), Number(5), Text("q_"), Text("{J}"), object}).number,
              kNoArray);
}

TEST_F(LateBoundJobHelper, HandsNothingOnForNoProviderOptions) {
    VARIANT nothing{};
    nothing.vt = VT_DISPATCH;
    const Outcome outcome = Call(L"JobTableCreationScript", {nothing, Number(5), Text("q_")});
    ASSERT_EQ(outcome.status, S_OK);
    EXPECT_NE(TextOf(outcome.result->bstrVal).find("CREATE TABLE IF NOT EXISTS q_job "), std::string::npos);
}

TEST_F(LateBoundJobHelper, DoesNotOfferWhatItInherits) {
    EXPECT_EQ(Call(L"QueryInterface", {}).status, DISP_E_MEMBERNOTFOUND);
}

TEST_F(LateBoundJobHelper, PutsNoValueIntoAMethod) {
    EXPECT_EQ(CallByName(*helper_.Get(), L"Version", {Text("9")}, {}, DISPATCH_PROPERTYPUT).status,
              DISP_E_MEMBERNOTFOUND);
}

TEST(LateBoundDurationTimer, MeasuresFromItsCreation) {
    const Apartment apartment;
    const ComPointer<IDispatch> timer = NewObject(L"Job_83.DurationTimer");
    const Outcome first = CallByName(*timer.Get(), L"Duration", {});
    ASSERT_EQ(first.status, S_OK);
    ASSERT_EQ(first.result->vt, VT_R8);
    const Outcome second = CallByName(*timer.Get(), L"Duration", {}, {}, DISPATCH_PROPERTYGET);
    EXPECT_GE(second.result->dblVal, first.result->dblVal);
    EXPECT_EQ(CallByName(*timer.Get(), L"Start", {}).status, S_OK);
}

TEST(LateBoundEnums, HasNoMembersButCanBeMade) {
    const Apartment apartment;
    const ComPointer<IDispatch> enums = NewObject(L"Job_83.Enums");
    EXPECT_EQ(CallByName(*enums.Get(), L"sfJobGUID", {}).status, DISP_E_UNKNOWNNAME);
}

}  // namespace
}  // namespace kxjob

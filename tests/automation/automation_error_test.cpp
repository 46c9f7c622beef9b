#include "kxjob/automation_error.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <set>
#include <string>
#include <type_traits>

#include "automation/runtime_error.h"

namespace kxjob {
namespace {

TEST(AutomationError, CarriesNumberSourceDescriptionAndLine) {
    const AutomationError error(-2147220761, "Job_83.JobHelper.CreateJob", "No items", 41);
    EXPECT_EQ(error.Number(), -2147220761);
    EXPECT_EQ(error.Source(), "Job_83.JobHelper.CreateJob");
    EXPECT_EQ(error.Description(), "No items");
    EXPECT_EQ(error.Line(), 41);
    EXPECT_STREQ(error.what(), "No items");
}

TEST(AutomationError, DoesNotKnowItsLineUnlessTold) {
    EXPECT_EQ(AutomationError(1, "s", "d").Line(), 0);
}

TEST(AutomationError, IsCaughtAsAStandardException) {
    try {
        throw AutomationError(1, "s", "seen from outside");
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "seen from outside");
    }
}

TEST(AutomationError, NumbersAreThePublishedOnes) {
    const auto published = [](std::uint32_t number) { return static_cast<std::int32_t>(number); };
    EXPECT_EQ(kObjectErrorBase, 0x80040000U);
    EXPECT_EQ(error_number::kGuardRefusal, published(0x800402BDU));
    EXPECT_EQ(error_number::kNoRow, published(0x800402BEU));
    EXPECT_EQ(error_number::kStatementFailed, published(0x800402BFU));
    EXPECT_EQ(error_number::kConnectionFailed, published(0x800402C0U));
    EXPECT_EQ(error_number::kUnknownScript, published(0x800402C1U));
    EXPECT_EQ(error_number::kUnstorableText, published(0x800402C2U));
    EXPECT_EQ(error_number::kClassNotRegistered, published(0x800401F3U));
    EXPECT_EQ(error_number::kInvalidUseOfNull, published(0x800A005EU));
    EXPECT_EQ(error_number::kOverflow, published(0x800A0006U));
    EXPECT_EQ(error_number::kTypeMismatch, published(0x800A000DU));
    EXPECT_EQ(error_number::kInvalidCall, published(0x800A0005U));
    EXPECT_EQ(error_number::kDuplicateKey, published(0x800A01C9U));
    EXPECT_EQ(error_number::kObjectNotSet, published(0x800A005BU));
}

TEST(RaiseRuntimeError, DescribesEachNumberInItsOwnWords) {
    std::set<std::string> descriptions;
    for (const std::int32_t number :
         {error_number::kClassNotRegistered, error_number::kUnknownMember, error_number::kWrongArgumentCount,
          error_number::kInvalidCall, error_number::kOverflow, error_number::kOutOfMemory,
          error_number::kSubscriptOutOfRange, error_number::kTypeMismatch, error_number::kObjectNotSet,
          error_number::kInvalidUseOfNull, error_number::kDuplicateKey, error_number::kInternal}) {
        try {
            RaiseRuntimeError(number);
        } catch (const AutomationError& error) {
            EXPECT_EQ(error.Number(), number);
            EXPECT_EQ(error.Source(), "Job_83");
            descriptions.insert(error.Description());
        }
    }
    EXPECT_EQ(descriptions.size(), 12U);
    EXPECT_TRUE(descriptions.contains("Type mismatch"));
    EXPECT_TRUE(descriptions.contains("Invalid use of Null"));
    EXPECT_TRUE(descriptions.contains("Overflow"));
}

TEST(RaiseRuntimeError, PutsWhatItWasAboutBehindTheDescription) {
    try {
        RaiseRuntimeError(error_number::kClassNotRegistered, "Totals_83.Nightly");
        ADD_FAILURE() << "no error was raised";
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Description(), "Class not registered: Totals_83.Nightly");
    }
}

}  // namespace
}  // namespace kxjob

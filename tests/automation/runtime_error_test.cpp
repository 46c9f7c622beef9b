#include "automation/runtime_error.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>

#include "kxjob/automation_error.h"
#include "support/raised_error.h"
#include "support/sample_errors.h"

namespace kxjob {
namespace {

using testing_support::ErrorOf;

struct Sentence {
    std::int32_t number;
    const char* description;
};

void PrintTo(const Sentence& sentence, std::ostream* out) {
    *out << sentence.description;
}

class RuntimeError : public testing::TestWithParam<Sentence> {};

TEST_P(RuntimeError, SaysWhatHappenedInTheNameOfTheLibrary) {
    const AutomationError error = ErrorOf([] { RaiseRuntimeError(GetParam().number); });

    EXPECT_EQ(error.Number(), GetParam().number);
    EXPECT_EQ(error.Source(), "Job_83");
    EXPECT_EQ(error.Description(), GetParam().description);
}

TEST_P(RuntimeError, AddsTheDetail) {
    const AutomationError error = ErrorOf([] { RaiseRuntimeError(GetParam().number, "the detail"); });

    EXPECT_EQ(error.Number(), GetParam().number);
    EXPECT_EQ(error.Source(), "Job_83");
    EXPECT_EQ(error.Description(), std::string(GetParam().description) + ": the detail");
}

INSTANTIATE_TEST_SUITE_P(
    OfEachNumber, RuntimeError,
    testing::Values(Sentence{static_cast<std::int32_t>(0x800401F3U), "Class not registered"},
                    Sentence{testing_support::kUnknownMember, "Member not found"},
                    Sentence{testing_support::kWrongArgumentCount, "Wrong number of arguments"},
                    Sentence{testing_support::kInvalidCall, "Invalid procedure call or argument"},
                    Sentence{testing_support::kOverflow, "Overflow"},
                    Sentence{static_cast<std::int32_t>(0x800A0007U), "Out of memory"},
                    Sentence{testing_support::kSubscriptOutOfRange, "Subscript out of range"},
                    Sentence{testing_support::kTypeMismatch, "Type mismatch"},
                    Sentence{testing_support::kObjectNotSet, "Object not set"},
                    Sentence{testing_support::kInvalidUseOfNull, "Invalid use of Null"},
                    Sentence{testing_support::kDuplicateKey, "This key is already in the collection"},
                    Sentence{static_cast<std::int32_t>(0x800A0033U), "Internal error"}));

}  // namespace
}  // namespace kxjob

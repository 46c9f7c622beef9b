#include <gtest/gtest.h>

#include "kxjob/automation_error.h"
#include "records/iso_time.h"
#include "work/host/lot_size.h"
#include "work/host/store_watch.h"

namespace kxjob::command {
namespace {

TEST(LotSize, DoublesWhileLotsAreQuickAndHalvesWhenTheyAreSlow) {
    LotSize size(6);
    EXPECT_EQ(size.Now(), 1U);
    size.Took(0.1);
    EXPECT_EQ(size.Now(), 2U);
    size.Took(0.5);
    EXPECT_EQ(size.Now(), 2U);
    size.Took(0.1);
    size.Took(0.1);
    EXPECT_EQ(size.Now(), 6U) << "the limit";
    size.Took(1.5);
    EXPECT_EQ(size.Now(), 3U);
    size.Took(1.5);
    size.Took(1.5);
    EXPECT_EQ(size.Now(), 1U);
}

TEST(LaterBy, GoesOnOverTheEndsOfDaysAndYears) {
    EXPECT_EQ(LaterBy("2026-03-01T09:30:15.123Z", 60), "2026-03-01T09:31:15.123Z");
    EXPECT_EQ(LaterBy("2027-12-31T23:59:59.900Z", 0.2), "2028-01-01T00:00:00.100Z");
    EXPECT_EQ(LaterBy("2028-02-28T12:00:00.000Z", 86400), "2028-02-29T12:00:00.000Z");
}

TEST(LaterBy, RefusesAnotherForm) {
    for (const char* text :
         {"", "2026-03-01 09:30:15.123Z", "2026-03-01T09:30:15.123", "2026-03-01T09:30:1x.123Z"}) {
        EXPECT_THROW(LaterBy(text, 1), AutomationError) << text;
    }
}

bool IsAway(std::int32_t number, const std::string& description) {
    return IsStoreAway(AutomationError(number, "", description));
}

TEST(StoreWatch, WaitsForWhatMayComeBackAndForNothingElse) {
    for (const char* state : {"08S01", "57P01", "40001", "53300", "55P03", "HYT00", "25006"}) {
        EXPECT_TRUE(IsAway(error_number::kStatementFailed, "[" + std::string(state) + "] why")) << state;
    }
    EXPECT_TRUE(IsAway(error_number::kConnectionFailed, "[08001] why"));
    EXPECT_FALSE(IsAway(error_number::kStatementFailed, "[42S02] no such table"));
    EXPECT_FALSE(IsAway(error_number::kStatementFailed, "08S01"));
    EXPECT_FALSE(IsAway(error_number::kNoRow, "[08S01] why"));
}

}  // namespace
}  // namespace kxjob::command

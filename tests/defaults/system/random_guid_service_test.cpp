#include "defaults/system/random_guid_service.h"

#include <gmock/gmock.h>

#include <set>
#include <string>

namespace kxjob {
namespace {

using testing::MatchesRegex;

TEST(RandomGuidService, GivesVersion4GuidsInBraces) {
    RandomGuidService guids;
    for (int i = 0; i < 200; ++i) {
        const std::string digit = "[0-9A-F]";
        std::string form = "\\{";
        for (int place = 0; place < 8; ++place) form += digit;
        form += "-" + digit + digit + digit + digit;
        form += "-4" + digit + digit + digit;
        form += "-[89AB]" + digit + digit + digit + "-";
        for (int place = 0; place < 12; ++place) form += digit;
        EXPECT_THAT(guids.NewGuid(), MatchesRegex(form + "\\}"));
    }
}

TEST(RandomGuidService, GivesNoGuidTwice) {
    RandomGuidService guids;
    std::set<std::string> seen;
    for (int i = 0; i < 10'000; ++i) seen.insert(guids.NewGuid());
    EXPECT_EQ(seen.size(), 10'000U);
}

TEST(RandomGuidService, HasOneTextForNone) {
    RandomGuidService guids;
    EXPECT_EQ(guids.NullGuid(), "{00000000-0000-0000-0000-000000000000}");
}

}  // namespace
}  // namespace kxjob

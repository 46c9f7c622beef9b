#include "defaults/system/posix/posix_names.h"

#include <gtest/gtest.h>

namespace kxjob {
namespace {

TEST(WithNisDomain, PrefersTheHostNamesOwnDomain) {
    EXPECT_EQ(WithNisDomain("worker7.plant.example", "nis"), "worker7.plant.example");
    EXPECT_EQ(WithNisDomain("worker7", "nis"), "worker7.nis");
    EXPECT_EQ(WithNisDomain("worker7.", "nis"), "worker7.nis");
    EXPECT_EQ(WithNisDomain("worker7", "(none)"), "worker7");
    EXPECT_EQ(WithNisDomain("worker7", ""), "worker7");
}

TEST(LoginName, IsTheUsersOrTheNumber) {
    EXPECT_EQ(LoginName(0), "root");
    EXPECT_EQ(LoginName(3999999999U), "3999999999");
}

}  // namespace
}  // namespace kxjob

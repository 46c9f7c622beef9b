#include "defaults/store/kept_statements.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace kxjob {
namespace {

constexpr int kRoom = 64;

TEST(KeptStatements, AreFoundByTheirText) {
    KeptStatements<int> kept;
    kept.Keep("a", 1);
    EXPECT_EQ(kept.Keep("b", 2), 2);

    ASSERT_NE(kept.Find("a"), nullptr);
    EXPECT_EQ(*kept.Find("a"), 1);
    EXPECT_EQ(*kept.Find("b"), 2);
    EXPECT_EQ(kept.Find("c"), nullptr);
}

TEST(KeptStatements, GoWhenTheyAreDropped) {
    KeptStatements<std::shared_ptr<int>> kept;
    const std::weak_ptr<int> watched = kept.Keep("a", std::make_shared<int>(1));
    kept.Keep("b", std::make_shared<int>(2));

    kept.Drop("a");

    EXPECT_EQ(kept.Find("a"), nullptr);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(**kept.Find("b"), 2);
    kept.Keep("a", std::make_shared<int>(3));
    EXPECT_EQ(**kept.Find("a"), 3);
}

TEST(KeptStatements, GiveTheirRoomToOthersWhenTheyRestedLongest) {
    KeptStatements<int> kept;
    for (int number = 0; number < kRoom; ++number) kept.Keep(std::to_string(number), number);
    kept.Find("0");

    kept.Keep("new", -1);

    EXPECT_EQ(kept.Find("1"), nullptr);
    for (const int number : {0, 2, kRoom - 1})
        EXPECT_NE(kept.Find(std::to_string(number)), nullptr) << number;
    EXPECT_NE(kept.Find("new"), nullptr);
}

}  // namespace
}  // namespace kxjob

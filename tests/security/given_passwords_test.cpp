#include "given_passwords.h"

#include <gtest/gtest.h>

namespace kxjob::command {
namespace {

TEST(GivenPasswords, AreNotRepeated) {
    EXPECT_EQ(WithoutGivenPasswords("not expected: Driver=x;PWD=tiger --conection",
                                    {"list", "--conection", "Driver=x;PWD=tiger"}),
              "not expected: *** --conection");
    EXPECT_EQ(WithoutGivenPasswords("wrong: --provider=PWD=tiger", {"list", "--provider=PWD=tiger"}),
              "wrong: ***");
    EXPECT_EQ(WithoutGivenPasswords("wrong: --provider = PWD=tiger", {"list", "--provider=PWD=tiger"}),
              "wrong: --provider = ***");
    EXPECT_EQ(WithoutGivenPasswords("not expected: --type A cub tiger",
                                    {"list", "Password=my", "tiger", "cub", "--type", "A"}),
              "not expected: --type A *** ***");
}

TEST(GivenPasswords, AreAllThatIsHidden) {
    EXPECT_EQ(WithoutGivenPasswords("not expected: --conection", {"--conection", "Driver=SQLite"}),
              "not expected: --conection");
    EXPECT_EQ(WithoutGivenPasswords("a sentence about a", {"PWD=x", "a"}), "*** sentence about ***");
    EXPECT_EQ(WithoutGivenPasswords("untouched within words", {"PWD=x", "to", ""}), "untouched within words");
}

}  // namespace
}  // namespace kxjob::command

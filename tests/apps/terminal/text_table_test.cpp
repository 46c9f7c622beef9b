#include "terminal/text_table.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kxjob::command {
namespace {

TEST(TextTable, AlignsItsColumnsAndLeavesNoBlanksAtTheEnd) {
    TextTable table({"state", "items"});
    table.AddRow({"COMPLETE", "12"});
    table.AddRow({"F"});
    std::ostringstream out;

    table.Print(out, "Items");

    EXPECT_EQ(out.str(),
              "Items\n"
              "  state     items\n"
              "  COMPLETE  12\n"
              "  F\n\n");
}

TEST(TextTable, CountsCharactersNotBytes) {
    TextTable table({"a", "b"});
    table.AddRow({"\xC3\xA9\xC3\xA9", "x"});
    table.AddRow({"abc", "y"});
    std::ostringstream out;

    table.Print(out, "T");

    EXPECT_EQ(out.str(),
              "T\n"
              "  a    b\n"
              "  \xC3\xA9\xC3\xA9   x\n"
              "  abc  y\n\n");
}

TEST(TextTable, KeepsARowOnItsLine) {
    TextTable table({"a"});
    table.AddRow({"one\ntwo\033[2J"});
    std::ostringstream out;

    table.Print(out, "T");

    EXPECT_EQ(out.str(), "T\n  a\n  one two [2J\n\n");
}

TEST(TextTable, HasNoHeaderOverNothing) {
    std::ostringstream out;

    TextTable({"a", "b"}).Print(out, "Nothing");

    EXPECT_EQ(out.str(), "Nothing\n\n");
}

}  // namespace
}  // namespace kxjob::command

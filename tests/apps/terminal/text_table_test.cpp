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

}  // namespace
}  // namespace kxjob::command

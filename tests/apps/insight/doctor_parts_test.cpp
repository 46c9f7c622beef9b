#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>

#include "apps/command_process.h"
#include "apps/insight/insight_store.h"
#include "insight/doctor/clock_check.h"
#include "insight/doctor/expected_tables.h"
#include "insight/doctor/finding.h"
#include "kxjob/array.h"

namespace kxjob::command {
namespace {

using ::testing::UnorderedElementsAreArray;

TEST(DoctorPage, ListsEveryFindingWithItsNumberAndSeverity) {
    std::ostringstream kinds;
    for (const FindingKind& kind : AllFindingKinds())
        kinds << "| " << kind.number << " | " << kind.name << " | " << NameOf(kind.severity) << " |\n";

    std::ostringstream listed;
    std::istringstream page(testing_support::ContentOf(KXJOB_DOCS "/doctor.md"));
    const std::regex row(R"((\| \d+ \| [a-z-]+ \| [a-z]+ \|).*)");
    std::smatch match;
    for (std::string line; std::getline(page, line);) {
        if (std::regex_match(line, match, row)) listed << match[1] << '\n';
    }
    EXPECT_EQ(listed.str(), kinds.str());
}

TEST(ExpectedTables, AreThoseThatANewStoreHas) {
    testing_support::InsightStore store;
    std::vector<std::string> names;
    for (const ExpectedTable& table : ExpectedTables()) {
        const std::string name = store.Tables().Table(std::string(table.name));
        names.push_back(name);
        const Value columns = store.Tables().Query("SELECT name FROM pragma_table_info('" + name + "')");
        std::vector<std::string> there;
        for (std::int32_t row = 0; row < columns.Rows().Rows(); ++row)
            there.push_back(columns.Rows().Cell(0, row).ToText());
        EXPECT_THAT(there, UnorderedElementsAreArray(table.columns.begin(), table.columns.end())) << name;
    }
    const Value tables = store.Tables().Query("SELECT name FROM sqlite_master WHERE type = 'table'");
    std::vector<std::string> there;
    for (std::int32_t row = 0; row < tables.Rows().Rows(); ++row)
        there.push_back(tables.Rows().Cell(0, row).ToText());
    EXPECT_THAT(names, UnorderedElementsAreArray(there));
}

TEST(ExpectedTables, HaveAsManyIndexesAsTheScriptMakes) {
    testing_support::InsightStore store;
    std::size_t expected = 0;
    for (const ExpectedTable& table : ExpectedTables()) expected += table.indexes.size();
    EXPECT_EQ(store.Tables()
                  .Query("SELECT COUNT(*) FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL")
                  .Rows()
                  .Cell(0, 0),
              Value(static_cast<std::int32_t>(expected)));
}

TEST(ClockFinding, WarnsOfMoreThanFiveSeconds) {
    EXPECT_EQ(ClockFinding(5).kind.name, "clock-agrees");
    EXPECT_EQ(ClockFinding(-5).kind.name, "clock-agrees");
    EXPECT_EQ(ClockFinding(5.1).kind.name, "clock-differs");
    EXPECT_THAT(ClockFinding(-10).sentence, ::testing::HasSubstr("10.0 s behind this machine's"));
    EXPECT_THAT(ClockFinding(10).sentence, ::testing::HasSubstr("10.0 s ahead of this machine's"));
}

TEST(SentenceOf, IsOneLineWithAnEnd) {
    EXPECT_EQ(SentenceOf("refused\n\tIs it running?"), "refused Is it running?");
    EXPECT_EQ(SentenceOf("refused"), "refused.");
}

}  // namespace
}  // namespace kxjob::command

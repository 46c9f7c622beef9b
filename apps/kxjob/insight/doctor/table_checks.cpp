#include "insight/doctor/table_checks.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "insight/doctor/expected_tables.h"
#include "kxjob/automation_error.h"

namespace kxjob::command {
namespace {

bool CanRead(Store& store, const std::string& table, std::string_view columns) {
    try {
        store.Query(fmt::format("SELECT {} FROM {} WHERE 1 = 0", columns, table));
        return true;
    } catch (const AutomationError& error) {
        if (error.Number() != error_number::kStatementFailed) throw;
        return false;
    }
}

void CheckTable(Store& store, const ExpectedTable& expected, Findings& findings) {
    const std::string table = store.Table(std::string(expected.name));
    if (CanRead(store, table, fmt::format("{}", fmt::join(expected.columns, ", ")))) {
        findings.push_back(
            {finding::kTableThere, fmt::format("The table {} is there with all of its columns.", table)});
    } else if (!CanRead(store, table, "COUNT(*)")) {
        findings.push_back({expected.isNeeded ? finding::kTableUnreadable : finding::kSmallTableUnreadable,
                            fmt::format("The table {} is not there or may not be read.", table)});
    } else {
        for (const std::string_view column : expected.columns) {
            if (CanRead(store, table, column)) continue;
            findings.push_back({finding::kColumnUnreadable,
                                fmt::format("The column {} of the table {} is not there or may not be read.",
                                            column, table)});
        }
    }
}

}  // namespace

void CheckTables(Store& store, Findings& findings) {
    for (const ExpectedTable& expected : ExpectedTables()) CheckTable(store, expected, findings);
}

}  // namespace kxjob::command

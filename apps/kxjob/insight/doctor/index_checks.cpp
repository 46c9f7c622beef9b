#include "insight/doctor/index_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <optional>
#include <vector>

#include "insight/doctor/expected_tables.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

/// "schema.prefix_" in its two parts, the schema without its quotes.
struct QualifierParts {
    std::string schema;
    std::string prefix;
};

QualifierParts PartsOf(const std::string& nameQualifier) {
    const std::size_t dot = nameQualifier.rfind('.');
    if (dot == std::string::npos) return {"", nameQualifier};
    QualifierParts parts{nameQualifier.substr(0, dot), nameQualifier.substr(dot + 1)};
    std::erase_if(parts.schema,
                  [](char c) { return std::string_view("\"`[]").find(c) != std::string::npos; });
    return parts;
}

/// Engines differ in the letter case in which they keep a name.
std::string Folded(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

/// The statement that gives table and definition of each index of these tables; its definition is or holds,
/// in its first parentheses, the list of its columns. Nothing for an engine that this does not know.
std::optional<std::string> IndexQuery(Store& store, const QualifierParts& parts, const std::string& tables) {
    const std::string engine = store.EngineName();
    const std::string schema = store.Literal(parts.schema);
    if (engine == "SQLite") {
        return fmt::format(
            "SELECT tbl_name, sql FROM {}sqlite_master WHERE type = 'index' AND LOWER(tbl_name) IN ({})",
            parts.schema.empty() ? "" : parts.schema + ".", tables);
    }
    if (engine == "PostgreSQL") {
        return fmt::format("SELECT tablename, indexdef FROM pg_indexes WHERE LOWER(tablename) IN ({}) AND {}",
                           tables,
                           parts.schema.empty() ? "schemaname = ANY (current_schemas(false))"
                                                : fmt::format("LOWER(schemaname) = LOWER({})", schema));
    }
    if (engine == "MariaDB" || engine == "MySQL") {
        return fmt::format(
            "SELECT table_name, GROUP_CONCAT(column_name ORDER BY seq_in_index SEPARATOR ', ')"
            " FROM information_schema.statistics WHERE LOWER(table_name) IN ({}) AND table_schema = {}"
            " GROUP BY table_name, index_name",
            tables, parts.schema.empty() ? "DATABASE()" : schema);
    }
    return std::nullopt;
}

struct StoreIndex {
    std::string table;
    std::string columns;
};

StoreIndex IndexOf(const Row& row) {
    const std::string definition = Folded(row.Text(1));
    const std::size_t list = definition.find('(');
    return {Folded(row.Text(0)), list == std::string::npos ? definition : definition.substr(list + 1)};
}

/// "a, b" begins with "a", and "ab" does not.
bool BeginsWith(const std::string& columns, std::string_view expected) {
    return columns.starts_with(expected) &&
           (columns.size() == expected.size() || columns[expected.size()] == ',' ||
            columns[expected.size()] == ')');
}

}  // namespace

void CheckIndexes(Store& store, const std::string& nameQualifier, Findings& findings) {
    const QualifierParts parts = PartsOf(nameQualifier);
    const auto nameWithinSchema = [&](const ExpectedTable& table) {
        return Folded(parts.prefix + std::string(table.name));
    };
    std::string tables;
    for (const ExpectedTable& table : ExpectedTables()) {
        if (table.indexes.empty()) continue;
        tables += (tables.empty() ? "" : ", ") + store.Literal(nameWithinSchema(table));
    }
    const std::optional<std::string> query = IndexQuery(store, parts, tables);
    if (!query) {
        findings.push_back({finding::kIndexesUnknown,
                            fmt::format("Whether the indexes are there cannot be told: how to ask {} for "
                                        "them is not known.",
                                        store.EngineName())});
        return;
    }
    const std::vector<StoreIndex> indexes = ReadRows(store.Query(*query), IndexOf);
    for (const ExpectedTable& table : ExpectedTables()) {
        for (const std::string_view columns : table.indexes) {
            const bool isThere = std::ranges::any_of(indexes, [&](const StoreIndex& index) {
                return index.table == nameWithinSchema(table) && BeginsWith(index.columns, columns);
            });
            const std::string name = store.Table(std::string(table.name));
            findings.push_back(
                isThere ? Finding{finding::kIndexThere,
                                  fmt::format("The table {} has an index on {}.", name, columns)}
                        : Finding{finding::kIndexMissing,
                                  fmt::format("The table {} has no index on {}: what looks there gets slow "
                                              "with many rows.",
                                              name, columns)});
        }
    }
}

}  // namespace kxjob::command

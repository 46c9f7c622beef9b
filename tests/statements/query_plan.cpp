#include "statements/query_plan.h"

#include <algorithm>
#include <regex>

#include "kxjob/array.h"

namespace kxjob::testing_support {
namespace {

void AddOnce(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

void AddStep(QueryPlan& plan, const std::string& step) {
    plan.text += (plan.text.empty() ? "" : "; ") + step;
}

/// The rows of an EXPLAIN; none for a statement that reads nothing.
template <typename Look>
void ForEachRow(Session& session, const std::string& explain, Look look) {
    const Value rows = session.Query(explain);
    if (rows.IsEmpty()) return;
    for (std::int32_t row = 0; row < rows.Rows().Rows(); ++row) {
        look([&](std::int32_t column) { return rows.Rows().Cell(column, row).ToJoinedText(); });
    }
}

/// "SEARCH kx_job USING INDEX kx_job_state (jobstateid=?)", "SCAN kx_job", "USE TEMP B-TREE FOR GROUP BY".
QueryPlan OfSqlite(Session& session, const std::string& sql) {
    constexpr std::int32_t kDetail = 3;
    static const std::regex index(R"(USING (?:COVERING )?INDEX (\S+))");
    static const std::regex scan(R"(SCAN (\w+).*)");
    QueryPlan plan;
    ForEachRow(session, "EXPLAIN QUERY PLAN " + sql, [&](const auto& cell) {
        const std::string detail = cell(kDetail);
        AddStep(plan, detail);
        std::smatch match;
        if (std::regex_match(detail, match, scan)) {
            AddOnce(plan.wholeTables, match[1]);
        } else if (std::regex_search(detail, match, index)) {
            AddOnce(plan.indexes, match[1]);
        }
    });
    if (plan.text.empty() && sql.starts_with("DELETE")) plan.wholeTables.push_back("all of it");
    return plan;
}

/// Nodes as lines "  ->  Index Scan using kx_job_pkey on kx_job", and below each what it goes by.
QueryPlan OfPostgreSql(Session& session, const std::string& sql) {
    static const std::regex index(R"((?:using|Bitmap Index Scan on) (\S+)(?: on (\S+))?.*)");
    static const std::regex scan(R"(.*Seq Scan on (\S+).*)");
    QueryPlan plan;
    std::string unconditional;  // the table of an index scan that has shown no condition yet
    const auto endNode = [&] {
        if (!unconditional.empty()) AddOnce(plan.wholeTables, unconditional);
        unconditional.clear();
    };
    ForEachRow(session, "EXPLAIN (COSTS OFF) " + sql, [&](const auto& cell) {
        std::string line = cell(0);
        line.erase(0, line.find_first_not_of(" ->"));
        if (line.starts_with("Index Cond:")) unconditional.clear();
        const bool isNode = line.find(':') == std::string::npos && !line.starts_with("InitPlan") &&
                            !line.starts_with("SubPlan");
        if (!isNode) return;
        endNode();
        AddStep(plan, line);
        std::smatch match;
        if (std::regex_match(line, match, scan)) {
            AddOnce(plan.wholeTables, match[1]);
        } else if (std::regex_search(line, match, index)) {
            AddOnce(plan.indexes, match[1]);
            unconditional = match[2].matched ? match[2].str() : match[1].str();
        }
    });
    endNode();
    return plan;
}

/// A row for each table: how it is read ("const", "ref", "range", and "index" or "ALL" for the whole of it),
/// and by which key.
QueryPlan OfMariaDb(Session& session, const std::string& sql) {
    constexpr std::int32_t kKind = 1;
    constexpr std::int32_t kTable = 2;
    constexpr std::int32_t kType = 3;
    constexpr std::int32_t kKey = 5;
    constexpr std::int32_t kExtra = 9;
    QueryPlan plan;
    ForEachRow(session, "EXPLAIN " + sql, [&](const auto& cell) {
        const std::string table = cell(kTable);
        if (table.empty()) return AddStep(plan, cell(kExtra));
        if (cell(kKind) == "INSERT") return AddStep(plan, "insert into " + table);
        const std::string key = cell(kKey);
        std::string step = cell(kType) + " on " + table + (key.empty() ? "" : " by " + key);
        for (const char* work : {"Using temporary", "Using filesort"}) {
            if (cell(kExtra).find(work) != std::string::npos) step += ", " + std::string(work);
        }
        AddStep(plan, step);
        if (cell(kType) == "ALL" || cell(kType) == "index") {
            AddOnce(plan.wholeTables, table);
        } else if (!key.empty()) {
            AddOnce(plan.indexes, key);
        }
    });
    if (plan.text == "Deleting all rows") plan.wholeTables.push_back("all of it");
    return plan;
}

}  // namespace

QueryPlan PlanOf(Session& session, DataStoreProvider provider, const std::string& sql) {
    switch (provider) {
        case dspPostgreSql: return OfPostgreSql(session, sql);
        case dspMariaDb: return OfMariaDb(session, sql);
        default: return OfSqlite(session, sql);
    }
}

}  // namespace kxjob::testing_support

#include "records/history_record.h"

#include <fmt/format.h>

#include <string_view>

#include "kxjob/store.h"
#include "records/guid_text.h"
#include "records/optional_table.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

constexpr char kEscape = '!';

/// A condition that is true where the detail names the job.
std::string NamesJob(Store& store, const std::string& job) {
    constexpr std::string_view kWildcards = "%_[!";
    std::string pattern = "%<jobguid>";
    for (const char c : job) {
        if (kWildcards.find(c) != std::string_view::npos) pattern += kEscape;
        pattern += c;
    }
    pattern += "</jobguid>%";
    return fmt::format("detail LIKE {} ESCAPE '{}'", store.Literal(pattern), kEscape);
}

/// What ends a SELECT that is to give its first rows only.
std::string FirstRows(Store& store, std::int32_t limit) {
    if (store.EngineName() == "SQLite") return fmt::format(" LIMIT {}", limit);
    return fmt::format(" OFFSET 0 ROWS FETCH NEXT {} ROWS ONLY", limit);
}

}  // namespace

std::optional<std::vector<HistoryRecord>> ReadHistory(const StoreConnection& connection,
                                                      const std::string& job, std::int32_t limit) {
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    std::string sql = "SELECT historyid, writtendt, actioncode, detail, usercontext FROM ";
    sql += store.Table("adminhistory");
    if (!job.empty()) sql += " WHERE " + NamesJob(store, job);
    if (GuidText(job) != job) sql += " OR " + NamesJob(store, GuidText(job));
    sql += " ORDER BY writtendt DESC, historyid DESC" + FirstRows(store, limit);

    const std::optional<Value> rows = QueryOptionalTable(store, sql);
    if (!rows) return std::nullopt;
    return ReadRows(*rows, [](const Row& row) {
        return HistoryRecord{.guid = row.Text(0),
                             .written = row.Text(1),
                             .action = row.Text(2),
                             .detail = row.Text(3),
                             .user = row.Text(4)};
    });
}

Json ToJson(const HistoryRecord& record) {
    return {{"history", record.guid},
            {"written", record.written},
            {"action", record.action},
            {"detail", record.detail},
            {"user", record.user}};
}

}  // namespace kxjob::command

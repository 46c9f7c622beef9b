#include "work/protocol/job_store.h"

#include <utility>

#include "kxjob/caller_texts.h"

namespace kxjob::command {

JobStore::JobStore(StoreConnection connection)
    : connection_(std::move(connection)),
      store_(connection_.connectionString, connection_.provider, connection_.nameQualifier) {}

std::string JobStore::Literals(const std::vector<std::string>& texts) {
    std::string list;
    for (const std::string& text : texts) {
        if (!list.empty()) list += ", ";
        list += Literal(text);
    }
    return list;
}

Value JobStore::Query(const std::string& sql) {
    Value rows = store_.Query(sql);
    return rows.IsEmpty() ? Value(RowArray(1)) : rows;
}

Value JobStore::Cell(const std::string& sql) {
    const Value rows = store_.Query(sql);
    return rows.IsEmpty() ? Value(Null{}) : rows.Rows().Cell(0, 0);
}

std::string JobStore::Now() {
    std::string now = store_.NowISODateTime();
    return now.empty() ? NowISODateTime() : now;
}

std::int32_t RowCount(const Value& rows) {
    return rows.IsEmpty() ? 0 : rows.Rows().Rows();
}

}  // namespace kxjob::command

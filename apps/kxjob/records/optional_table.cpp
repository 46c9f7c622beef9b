#include "records/optional_table.h"

#include "kxjob/automation_error.h"

namespace kxjob::command {

std::optional<Value> QueryOptionalTable(Store& store, const std::string& sql) {
    constexpr const char* kNoSuchTable = "[42S02]";
    try {
        return store.Query(sql);
    } catch (const AutomationError& error) {
        if (!error.Description().starts_with(kNoSuchTable)) throw;
        return std::nullopt;
    }
}

}  // namespace kxjob::command

#include "records/application_state_record.h"

#include <algorithm>

#include "kxjob/automation_error.h"
#include "kxjob/store.h"
#include "records/guid_text.h"
#include "records/optional_table.h"
#include "records/row.h"

namespace kxjob::command {

ApplicationStates::ApplicationStates(const StoreConnection& connection) {
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    const std::optional<Value> rows =
        QueryOptionalTable(store, "SELECT stateid, stateguid FROM " + store.Table("applicationstate"));
    states_ = ReadRows(rows.value_or(Value()),
                       [](const Row& row) { return State{.name = row.Text(0), .guid = row.Text(1)}; });
}

std::string ApplicationStates::GuidOf(const std::string& name) const {
    const auto found = std::ranges::find(states_, name, &State::name);
    return found == states_.end() || found->guid.empty() ? kNullGuid : found->guid;
}

std::string ApplicationStates::NameOf(const std::string& guid) const {
    const auto found = std::ranges::find(states_, guid, &State::guid);
    return found == states_.end() ? std::string() : found->name;
}

std::string ApplicationStates::Meant(const std::string& typed) const {
    std::string guid = GuidText(typed);
    if (IsGuid(guid)) return guid;
    const auto found = std::ranges::find(states_, typed, &State::name);
    if (found == states_.end()) {
        throw AutomationError(error_number::kNoRow, "kxjob", "There is no application state " + typed);
    }
    return found->guid;
}

}  // namespace kxjob::command

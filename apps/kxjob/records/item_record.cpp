#include "records/item_record.h"

#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"
#include "kxjob/store.h"
#include "records/guid_text.h"
#include "records/optional_json.h"
#include "records/row.h"

namespace kxjob::command {
namespace {

/// The columns of GetJobItems.
enum ItemColumn : std::int32_t { kGuid, kIdentifier, kState, kSequence };

ItemRecord ItemOf(const Row& row) {
    return {.guid = row.Text(kGuid),
            .identifier = row.Text(kIdentifier),
            .state = row.Text(kState),
            .sequence = row.Whole(kSequence)};
}

ItemDetails DetailsOf(const Row& row) {
    return {.guid = row.Text(jiifJobItemGUID),
            .identifier = row.Text(jiifIdentifier),
            .state = row.Text(jiifJobItemState),
            .data = row.Text(jiifData),
            .started = row.OptionalText(jiifStartDate),
            .ended = row.OptionalText(jiifEndDate),
            .note = row.Text(jiifFaliureNote)};
}

/// The key of the item as the store has it; empty when it has none.
std::string KeyOf(const StoreConnection& connection, const std::string& typed) {
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    const std::vector<std::string> keys =
        ReadRows(store.Query("SELECT jobitemguid FROM " + store.Table("JobItem") + " WHERE jobitemguid IN (" +
                             store.Literal(typed) + ", " + store.Literal(GuidText(typed)) + ")"),
                 [](const Row& row) { return row.Text(0); });
    return keys.empty() ? std::string() : keys.front();
}

}  // namespace

std::vector<ItemRecord> ReadItems(const StoreConnection& store, const std::string& job) {
    JobHelper jobs;
    // GetJobItems raises, and logs, that there is none.
    if (jobs.JobItemsAtState(store.connectionString, store.nameQualifier, job).IsEmpty()) return {};
    return ReadRows(jobs.GetJobItems(store.connectionString, store.provider, store.nameQualifier, job),
                    ItemOf);
}

ItemDetails ReadItem(const StoreConnection& store, const std::string& guid) {
    const std::string key = KeyOf(store, guid);
    if (key.empty()) throw AutomationError(error_number::kNoRow, "kxjob", "There is no item " + guid);
    return ReadRows(JobHelper().GetJobItem(store.connectionString, store.provider, store.nameQualifier, key),
                    DetailsOf)
        .at(0);
}

Json ToJson(const ItemRecord& item) {
    return {{"item", item.guid},
            {"identifier", item.identifier},
            {"state", item.state},
            {"sequence", item.sequence}};
}

Json ToJson(const ItemDetails& item) {
    return {{"item", item.guid}, {"identifier", item.identifier},   {"state", item.state},
            {"data", item.data}, {"started", OrNull(item.started)}, {"ended", OrNull(item.ended)},
            {"note", item.note}};
}

}  // namespace kxjob::command

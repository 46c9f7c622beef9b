#include "records/item_record.h"

#include "kxjob/automation_error.h"
#include "kxjob/job_helper.h"
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

/// What `read` gives, or Empty where it raises that there is no row.
template <typename Read>
Value RowsOrEmpty(Read read) {
    try {
        return read();
    } catch (const AutomationError& error) {
        if (error.Number() != error_number::kNoRow) throw;
        return {};
    }
}

}  // namespace

std::vector<ItemRecord> ReadItems(const StoreConnection& store, const std::string& job) {
    return ReadRows(RowsOrEmpty([&] {
                        return JobHelper().GetJobItems(store.connectionString, store.provider,
                                                       store.nameQualifier, job);
                    }),
                    ItemOf);
}

ItemDetails ReadItem(const StoreConnection& store, const std::string& guid) {
    for (const std::string& key : {guid, GuidText(guid)}) {
        const std::vector<ItemDetails> items =
            ReadRows(RowsOrEmpty([&] {
                         return JobHelper().GetJobItem(store.connectionString, store.provider,
                                                       store.nameQualifier, key);
                     }),
                     DetailsOf);
        if (!items.empty()) return items.front();
    }
    throw AutomationError(error_number::kNoRow, "kxjob", "There is no item " + guid);
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

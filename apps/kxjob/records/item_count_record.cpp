#include "records/item_count_record.h"

#include <algorithm>
#include <tuple>

#include "kxjob/job_helper.h"
#include "records/row.h"

namespace kxjob::command {

std::vector<StateCount> CountItemsByState(const StoreConnection& store, const std::string& job) {
    std::vector<StateCount> counts =
        ReadRows(JobHelper().JobItemsAtState(store.connectionString, store.nameQualifier, job),
                 [](const Row& row) { return StateCount{.state = row.Text(0), .items = row.Whole(1)}; });
    std::ranges::sort(counts, {}, &StateCount::state);
    // No state is NULL or the empty text, which the store counts apart.
    for (std::size_t i = 1; i < counts.size();) {
        if (counts[i].state == counts[i - 1].state) {
            counts[i - 1].items += counts[i].items;
            counts.erase(counts.begin() + static_cast<std::ptrdiff_t>(i));
        } else {
            ++i;
        }
    }
    return counts;
}

std::vector<OwnerCount> CountItemsByOwner(const StoreConnection& store, const std::string& job) {
    std::vector<OwnerCount> counts =
        ReadRows(JobHelper().OwnersOfJobItemsAtState(store.connectionString, store.nameQualifier, job),
                 [](const Row& row) {
                     return OwnerCount{.machine = row.Text(0), .state = row.Text(1), .items = row.Whole(2)};
                 });
    std::ranges::sort(counts, {},
                      [](const OwnerCount& count) { return std::tie(count.machine, count.state); });
    return counts;
}

std::int64_t CountItems(const StoreConnection& store, const std::string& job) {
    std::int64_t items = 0;
    for (const StateCount& count : CountItemsByState(store, job)) items += count.items;
    return items;
}

Json ToJson(const StateCount& count) {
    return {{"state", count.state}, {"items", count.items}};
}

Json ToJson(const OwnerCount& count) {
    return {{"machine", count.machine}, {"state", count.state}, {"items", count.items}};
}

}  // namespace kxjob::command

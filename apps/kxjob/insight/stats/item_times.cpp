#include "insight/stats/item_times.h"

#include "kxjob/store.h"
#include "records/iso_time.h"
#include "records/row.h"

namespace kxjob::command {

std::map<std::string, std::vector<ItemTime>> ReadItemTimes(const StoreConnection& connection,
                                                           const std::vector<JobRecord>& jobs) {
    std::map<std::string, std::vector<ItemTime>> times;
    if (jobs.empty()) return times;
    Store store(connection.connectionString, connection.provider, connection.nameQualifier);
    std::string guids;
    for (const JobRecord& job : jobs) {
        guids += guids.empty() ? "" : ", ";
        guids += store.Literal(job.guid);
    }
    const Value rows =
        store.Query("SELECT jobguid, startdt, enddt FROM " + store.Table("JobItem") + " WHERE jobguid IN (" +
                    guids + ") AND jobitemstateid IN ('COMPLETE', 'FAILED')");
    for (std::int32_t place = 0; !rows.IsEmpty() && place < rows.Rows().Rows(); ++place) {
        const Row row(rows.Rows(), place);
        const std::optional<Moment> end = ParseIsoTime(row.Text(2));
        if (end) times[row.Text(0)].push_back({.start = ParseIsoTime(row.Text(1)), .end = *end});
    }
    return times;
}

}  // namespace kxjob::command

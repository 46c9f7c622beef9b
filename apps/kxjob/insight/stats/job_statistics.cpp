#include "insight/stats/job_statistics.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "records/job_pace.h"
#include "records/optional_json.h"

namespace kxjob::command {
namespace {

/// The value that the given share of the sorted numbers does not exceed.
std::optional<double> Quantile(const std::vector<double>& sorted, double share) {
    if (sorted.empty()) return std::nullopt;
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(sorted.size())));
    return sorted[std::max<std::size_t>(rank, 1) - 1];
}

double SecondsBetween(Moment from, Moment to) {
    return std::chrono::duration<double>(to - from).count();
}

void AddItems(JobStatistics& statistics, const std::vector<ItemTime>& items, std::optional<Moment> start) {
    if (items.empty()) return;
    const Moment origin = start.value_or(std::ranges::min(items, {}, &ItemTime::end).end);
    std::vector<double> durations;
    for (const ItemTime& item : items) {
        if (item.start) durations.push_back(SecondsBetween(*item.start, item.end));
        statistics.ends.push_back(SecondsBetween(origin, item.end));
    }
    std::ranges::sort(durations);
    std::ranges::sort(statistics.ends);
    statistics.itemMedian = Quantile(durations, 0.5);
    statistics.itemNineTenths = Quantile(durations, 0.9);
}

}  // namespace

JobStatistics StatisticsOf(const JobRecord& job, const std::vector<ItemTime>& items) {
    JobStatistics statistics;
    statistics.job = job;
    const std::optional<Moment> start = ParseIsoTime(job.started.value_or(""));
    const std::optional<Moment> end = ParseIsoTime(job.lastCompletion.value_or(""));
    if (start && end) statistics.duration = SecondsBetween(*start, *end);
    if (const std::optional<JobPace> pace = PaceOf(job, end.value_or(Moment()))) {
        statistics.itemsPerSecond = pace->itemsPerSecond;
        statistics.meanIncrement = pace->meanIncrement;
        if (pace->variance) statistics.incrementDeviation = std::sqrt(*pace->variance);
    }
    AddItems(statistics, items, start);
    return statistics;
}

Json ToJson(const JobStatistics& statistics) {
    const JobRecord& job = statistics.job;
    return {{"job", job.guid},
            {"type", job.type},
            {"state", job.state},
            {"description", job.description},
            {"totalItems", job.totalItems},
            {"succeededItems", job.succeededItems},
            {"failedItems", job.failedItems},
            {"durationSeconds", OrNull(statistics.duration)},
            {"itemsPerSecond", OrNull(statistics.itemsPerSecond)},
            {"meanIncrementSeconds", OrNull(statistics.meanIncrement)},
            {"incrementDeviationSeconds", OrNull(statistics.incrementDeviation)},
            {"itemMedianSeconds", OrNull(statistics.itemMedian)},
            {"itemNineTenthsSeconds", OrNull(statistics.itemNineTenths)}};
}

}  // namespace kxjob::command

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "records/iso_time.h"
#include "records/job_record.h"
#include "value_json.h"

namespace kxjob::command {

/// The start and the end of one item.
struct ItemTime {
    std::optional<Moment> start;
    Moment end;
};

/// How a job went, times in seconds.
struct JobStatistics {
    JobRecord job;
    /// From its start to the end of its last item.
    std::optional<double> duration;
    std::optional<double> itemsPerSecond;
    /// Between the ends of two items, and the deviation of that.
    std::optional<double> meanIncrement;
    std::optional<double> incrementDeviation;
    /// How long one item took, of those that tell: half of them at most the first, nine tenths of them at
    /// most the second.
    std::optional<double> itemMedian;
    std::optional<double> itemNineTenths;
    /// When its items ended, since its start, in ascending order.
    std::vector<double> ends;
};

JobStatistics StatisticsOf(const JobRecord& job, const std::vector<ItemTime>& items);

/// All but the ends of the items; null for what cannot be told.
Json ToJson(const JobStatistics& statistics);

}  // namespace kxjob::command

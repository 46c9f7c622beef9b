#pragma once

#include <optional>

#include "records/iso_time.h"
#include "records/job_record.h"

namespace kxjob::command {

/// How quickly a job gets on, from its counters alone: n items have ended between its start and its last
/// completion. The time between two completions is an increment, and the first one counts from the start, so
/// that the n increments sum up to that time, T. Their mean is T/n. The job's row keeps q, the sum of their
/// squares, which gives their variance: q/n - (T/n)^2.
struct JobPace {
    double meanIncrement = 0;  // seconds an item
    double itemsPerSecond = 0;
    /// Of the increments, in square seconds. Nothing for fewer than two of them, and where the counters do
    /// not fit together, as when a worker keeps no squares.
    std::optional<double> variance;
    /// When the last item ends if the job goes on like this; nothing for a job that is not RUNNING.
    std::optional<Moment> estimatedEnd;
};

/// Nothing for a job none of whose items has ended, or whose row does not say when. `now` is the time by the
/// clock that wrote the row's times.
std::optional<JobPace> PaceOf(const JobRecord& job, Moment now);

/// How far the job is, in per cent.
double PercentDone(const JobRecord& job);

}  // namespace kxjob::command

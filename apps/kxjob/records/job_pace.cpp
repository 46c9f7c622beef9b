#include "records/job_pace.h"

#include <algorithm>
#include <cmath>

namespace kxjob::command {
namespace {

std::optional<double> VarianceOf(double sumOfSquares, double count, double mean) {
    if (count < 2 || sumOfSquares <= 0) return std::nullopt;
    const double meanOfSquares = sumOfSquares / count;
    const double variance = meanOfSquares - mean * mean;
    // A sum below the least that the mean allows is no sum of these increments; rounding may miss by a
    // little.
    constexpr double kRounding = 1e-6;
    if (variance < -kRounding * meanOfSquares) return std::nullopt;
    return std::max(variance, 0.0);
}

}  // namespace

std::optional<JobPace> PaceOf(const JobRecord& job, Moment now) {
    const std::optional<Moment> start = ParseIsoTime(job.started.value_or(""));
    const std::optional<Moment> last = ParseIsoTime(job.lastCompletion.value_or(""));
    const auto ended = static_cast<double>(EndedItems(job));
    if (!start || !last || *last <= *start || ended < 1) return std::nullopt;

    const double seconds = std::chrono::duration<double>(*last - *start).count();
    JobPace pace;
    pace.meanIncrement = seconds / ended;
    pace.itemsPerSecond = ended / seconds;
    pace.variance = VarianceOf(job.sumOfSquaredIncrements, ended, pace.meanIncrement);
    const auto left = static_cast<double>(job.totalItems) - ended;
    if (job.state == "RUNNING" && left > 0) {
        pace.estimatedEnd = now + std::chrono::milliseconds(std::llround(left * pace.meanIncrement * 1000));
    }
    return pace;
}

double PercentDone(const JobRecord& job) {
    if (job.totalItems <= 0) return 0;
    return 100.0 * static_cast<double>(EndedItems(job)) / static_cast<double>(job.totalItems);
}

}  // namespace kxjob::command

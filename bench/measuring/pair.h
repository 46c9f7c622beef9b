#pragma once

#include <benchmark/benchmark.h>

#include <functional>

namespace kxjob::bench {

/// The same work twice: by the bare driver, and by the library.
struct Pair {
    std::function<void()> beforeDriver = [] {};  // neither this nor beforeLibrary counts
    std::function<void()> driver;
    std::function<void()> beforeLibrary = [] {};
    std::function<void()> library;
};

/// Runs both by turns, each first every other time, so that whatever else the machine does hits both alike.
/// Counters: the medians driver_us and library_us, and ratio, the median of the ratios of neighbours, with
/// the quartiles ratio_25 and ratio_75. The benchmark's own time is the library's.
void MeasurePair(benchmark::State& state, const Pair& pair);

/// Seconds that `work` takes.
double Seconds(const std::function<void()>& work);

/// The value that `share` (0 to 1) of the values lie below.
double Quantile(std::vector<double> values, double share);

}  // namespace kxjob::bench

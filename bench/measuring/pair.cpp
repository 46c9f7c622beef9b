#include "measuring/pair.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace kxjob::bench {

double Seconds(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double Quantile(std::vector<double> values, double share) {
    const auto place = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<std::size_t>(place)];
}

void MeasurePair(benchmark::State& state, const Pair& pair) {
    std::vector<double> driver;
    std::vector<double> library;
    std::vector<double> ratios;
    const auto runDriver = [&] {
        pair.beforeDriver();
        driver.push_back(Seconds(pair.driver));
    };
    const auto runLibrary = [&] {
        pair.beforeLibrary();
        library.push_back(Seconds(pair.library));
    };
    bool driverFirst = true;
    for (auto _ : state) {
        if (driverFirst) runDriver();
        runLibrary();
        if (!driverFirst) runDriver();
        driverFirst = !driverFirst;
        ratios.push_back(library.back() / driver.back());
        state.SetIterationTime(library.back());
    }
    constexpr double kMicroseconds = 1e6;
    state.counters["driver_us"] = Quantile(driver, 0.5) * kMicroseconds;
    state.counters["library_us"] = Quantile(library, 0.5) * kMicroseconds;
    state.counters["ratio"] = Quantile(ratios, 0.5);
    state.counters["ratio_25"] = Quantile(ratios, 0.25);
    state.counters["ratio_75"] = Quantile(ratios, 0.75);
}

}  // namespace kxjob::bench

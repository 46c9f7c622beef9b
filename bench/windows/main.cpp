#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "com/support/apartment.h"
#include "com/support/test_store.h"
#include "windows/bound_calls.h"

// Prints what the benchmark program of the other platform writes: the native call is the base here.

namespace kxjob::bench {
namespace {

double Microseconds(const std::function<void()>& call, int calls) {
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i) call();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count() /
           calls;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Print(const std::string& name, const std::vector<double>& native, const std::vector<double>& bound,
           const char* separator) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < native.size(); ++i) ratios.push_back(bound[i] / native[i]);
    std::printf(
        "%s\n {\"name\": \"com/wine/%s\", \"run_type\": \"iteration\", \"driver_us\": %g,"
        " \"library_us\": %g, \"ratio\": %g}",
        separator, name.c_str(), Median(native), Median(bound), Median(ratios));
}

/// The three roads by turns, many times.
void Measure(const BoundCall& call, int calls, const char* separator) {
    constexpr int kRounds = 51;
    std::vector<double> native;
    std::vector<double> early;
    std::vector<double> late;
    for (int round = 0; round < kRounds; ++round) {
        native.push_back(Microseconds(call.native, calls));
        early.push_back(Microseconds(call.early, calls));
        late.push_back(Microseconds(call.late, calls));
    }
    Print(call.name + ", early-bound", native, early, separator);
    Print(call.name + ", late-bound", native, late, ",");
}

void MeasureAll() {
    const testing_support::Apartment apartment;
    const testing_support::TestStore store = testing_support::TestStore::InFile("bench.db");
    JobHelper helper;
    const ServerObject server;
    Measure(IsJobCompleteCall(helper, server), 1000, "");
    Measure(UpdateJobTaskLockCall(helper, server, store.ConnectionString(), store.Qualifier()), 20, ",");
}

}  // namespace
}  // namespace kxjob::bench

int main() {
    std::printf("{\"context\": {}, \"benchmarks\": [");
    try {
        kxjob::bench::MeasureAll();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    std::printf("\n]}\n");
}

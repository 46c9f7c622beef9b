#include "calls/call_bench.h"

#include <benchmark/benchmark.h>

#include "calls/call_pair.h"
#include "calls/container.h"
#include "measuring/pair.h"
#include "measuring/registration.h"
#include "stores/processors.h"
#include "support/every_method.h"

namespace kxjob::bench {
namespace {

using testing_support::EveryMethod;
using testing_support::MethodCall;

/// What a call that sends one statement may take, as a multiple of the driver's time.
constexpr double kWantedRatio = 1.05;

/// Too short to be timed one by one.
constexpr int kCallsWithoutStatement = 1000;

void MeasureWithoutStatement(benchmark::State& state, CallPair& calls) {
    std::vector<double> times;
    for (auto _ : state) {
        times.push_back(Seconds([&] {
            for (int i = 0; i < kCallsWithoutStatement; ++i) calls.RunLibrary();
        }));
        state.SetIterationTime(times.back());
    }
    state.counters["library_us"] = Quantile(times, 0.5) * 1e6 / kCallsWithoutStatement;
}

void MeasureCall(benchmark::State& state, const Engine& engine, const MethodCall& method) {
    const ProcessorsApart apart;
    CallPair calls(engine, method);
    state.counters["statements"] = static_cast<double>(calls.StatementCount());
    if (calls.StatementCount() == 0) return MeasureWithoutStatement(state, calls);
    if (calls.StatementCount() == 1) state.counters["at_most"] = kWantedRatio;
    MeasurePair(state, {.beforeDriver = [&] { calls.ResetDriver(); },
                        .driver = [&] { calls.RunDriver(); },
                        .beforeLibrary = [&] { calls.ResetLibrary(); },
                        .library = [&] { calls.RunLibrary(); }});
}

}  // namespace

void RegisterCalls() {
    RegisterContainerComponent();
    for (const Engine& engine : Engines()) {
        const bool embedded = engine.connectionString.empty();
        for (const MethodCall& method : EveryMethod()) {
            const std::string name = "call/" + engine.name + "/" + method.name;
            Register(name, embedded ? QuickOr(500, 3000) : QuickOr(100, 1000),
                     [engine, &method](benchmark::State& state) { MeasureCall(state, engine, method); });
        }
    }
}

}  // namespace kxjob::bench

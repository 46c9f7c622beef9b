#include "calls/call_bench.h"

#include <benchmark/benchmark.h>

#include "calls/container.h"
#include "kxjob/job_helper.h"
#include "measuring/pair.h"
#include "measuring/replay.h"
#include "recording/statement_tap.h"
#include "stores/bench_store.h"
#include "support/every_method.h"

namespace kxjob::bench {
namespace {

using testing_support::EveryMethod;
using testing_support::MethodCall;

constexpr int kWarmUp = 3;

/// What a call that sends one statement may take, as a multiple of the driver's time.
constexpr double kWantedRatio = 1.05;

/// Too short to be timed one by one.
constexpr int kCallsWithoutStatement = 1000;

/// The same container twice, so that neither side finds its pages changed by the other.
class CallPair {
public:
    CallPair(const Engine& engine, const MethodCall& method)
        : method_(method), driverStore_(engine), libraryStore_(engine), reset_(ResetAfter(method.name)) {
        for (const std::string& sql : FillContainer()) {
            driverStore_.RunBare(sql);
            libraryStore_.RunByLibrary(sql);
        }
        recorded_ = StatementsOf(driverStore_.Connection(), [&] {
            JobHelper helper;
            Call(helper, driverStore_);
        });
        for (int i = 0; i < kWarmUp && !recorded_.empty(); ++i) {
            ResetDriver();
            RunDriver();
            ResetLibrary();
            Call(helper_, libraryStore_);
        }
    }

    std::size_t StatementCount() const { return recorded_.size(); }

    void ResetDriver() {
        for (const std::string& sql : reset_) driverStore_.RunBare(sql);
        replayed_ = WithNewGuids(recorded_);
    }
    void RunDriver() { Replay(driverStore_.Driver(), replayed_); }
    void ResetLibrary() {
        for (const std::string& sql : reset_) libraryStore_.RunByLibrary(sql);
    }
    void RunLibrary() { Call(helper_, libraryStore_); }

private:
    void Call(JobHelper& helper, const BenchStore& store) {
        method_.call(helper, store.Connection(), store.Provider(), store.Qualifier());
    }

    const MethodCall& method_;
    BenchStore driverStore_;
    BenchStore libraryStore_;
    std::vector<std::string> reset_;
    std::vector<Statement> recorded_;
    std::vector<Statement> replayed_;
    JobHelper helper_;
};

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
            benchmark::RegisterBenchmark(
                name.c_str(),
                [engine, &method](benchmark::State& state) { MeasureCall(state, engine, method); })
                ->Iterations(embedded ? QuickOr(500, 3000) : QuickOr(100, 1000))
                ->UseManualTime();
        }
    }
}

}  // namespace kxjob::bench

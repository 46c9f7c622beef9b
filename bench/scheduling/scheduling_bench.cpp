#include "scheduling/scheduling_bench.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <future>
#include <memory>

#include "calls/container.h"
#include "kxjob/job_helper.h"
#include "measuring/pair.h"
#include "measuring/registration.h"
#include "measuring/replay.h"
#include "recording/statement_tap.h"
#include "stores/bench_store.h"
#include "stores/rows.h"

namespace kxjob::bench {
namespace {

constexpr const char* kType = "MEASURED";
constexpr int kCallers = 100;

void AskForNextJob(JobHelper& helper, const BenchStore& store) {
    std::string job;
    double rank = 0;
    helper.GetNextJob(store.Connection(), store.Provider(), store.Qualifier(), job, rank);
}

/// Every RUNNING job has a task: the call then has the most to read.
void Fill(BenchStore& store, int jobs, const std::string& state) {
    AddType(store, kType, kContainerComponent);
    AddJobs(store, jobs, kType, state, state == "RUNNING");
}

std::vector<Statement> Recorded(BenchStore& store) {
    return StatementsOf(store.Connection(), [&] {
        JobHelper helper;
        AskForNextJob(helper, store);
    });
}

void MeasureNext(benchmark::State& state, const Engine& engine, int jobs, const std::string& jobState) {
    BenchStore store(engine);
    Fill(store, jobs, jobState);
    const std::vector<Statement> statements = Recorded(store);
    JobHelper helper;
    MeasurePair(state, {.driver = [&] { Replay(store.Driver(), statements); },
                        .library = [&] { AskForNextJob(helper, store); }});
    state.counters["statements"] = static_cast<double>(statements.size());
    state.counters["us_per_job"] = state.counters["library_us"].value / jobs;
}

void OnThreads(const std::function<void()>& work) {
    std::vector<std::future<void>> callers;
    for (int i = 0; i < kCallers; ++i) callers.push_back(std::async(std::launch::async, work));
    for (std::future<void>& caller : callers) caller.get();
}

/// Opening the connections counts on both sides: a new thread has none.
void MeasureCallers(benchmark::State& state, const Engine& engine) {
    const int calls = QuickOr(2, 5);
    const int jobs = QuickOr(100, 1000);
    BenchStore store(engine);
    Fill(store, jobs, "RUNNING");
    const std::vector<Statement> statements = Recorded(store);
    const auto byDriver = [&] {
        const std::unique_ptr<BareDriver> driver = store.NewDriver();
        for (int i = 0; i < calls; ++i) Replay(*driver, statements);
    };
    const auto byLibrary = [&] {
        JobHelper helper;
        for (int i = 0; i < calls; ++i) AskForNextJob(helper, store);
    };
    MeasurePair(state, {.driver = [&] { OnThreads(byDriver); }, .library = [&] { OnThreads(byLibrary); }});
    state.counters["calls"] = kCallers * calls;
}

}  // namespace

void RegisterScheduling() {
    for (const Engine& engine : Engines()) {
        const std::string name = "next/" + engine.name + "/";
        for (const int jobs : {10, 1000, QuickOr(5000, 50'000)}) {
            for (const std::string state : {"QUEUED", "RUNNING"}) {
                Register(
                    name + std::to_string(jobs) + " " + state, jobs > 1000 ? 5 : QuickOr(20, 100),
                    [engine, jobs, state](benchmark::State& run) { MeasureNext(run, engine, jobs, state); });
            }
        }
        Register(name + "100 callers", QuickOr(1, 3),
                 [engine](benchmark::State& state) { MeasureCallers(state, engine); });
    }
}

}  // namespace kxjob::bench

#include <benchmark/benchmark.h>

#include <functional>

#include "kxjob/job_helper.h"
#include "large/large_bench.h"
#include "measuring/pair.h"
#include "measuring/registration.h"
#include "measuring/replay.h"
#include "recording/statement_tap.h"
#include "stores/bench_store.h"
#include "stores/rows.h"

namespace kxjob::bench {
namespace {

constexpr const char* kJob = "{00000000-0000-4000-8000-00000000A001}";
/// That of the rows.
constexpr const char* kState = "{00000000-0000-4000-8000-00000000E001}";

void RemoveJob(JobHelper& helper, const BenchStore& store) {
    helper.RemoveJobAndItems(store.Connection(), store.Provider(), store.Qualifier(), kJob);
}

/// The orphans only: every job belongs to the state that stays.
void Sweep(JobHelper& helper, const BenchStore& store) {
    helper.RemoveIrrelevantJobsInContainer(store.Connection(), store.Provider(), store.Qualifier(),
                                           "{00000000-0000-0000-0000-000000000000}", kState);
}

/// Once: what is removed has gone. The statements are recorded on a store that is filled alike.
void MeasureOnce(benchmark::State& state, const Engine& engine, void (*fill)(BenchStore&),
                 void (*call)(JobHelper&, const BenchStore&)) {
    BenchStore driverStore(engine);
    BenchStore libraryStore(engine);
    fill(driverStore);
    const std::vector<Statement> recorded = StatementsOf(driverStore.Connection(), [&] {
        JobHelper helper;
        call(helper, driverStore);
    });
    const std::vector<Statement> statements = WithNewGuids(recorded);
    JobHelper helper;
    MeasurePair(state, {.beforeDriver = [&] { fill(driverStore); },
                        .driver = [&] { Replay(driverStore.Driver(), statements); },
                        .beforeLibrary = [&] { fill(libraryStore); },
                        .library = [&] { call(helper, libraryStore); }});
    state.counters["statements"] = static_cast<double>(statements.size());
}

void FillJob(BenchStore& store) {
    AddItems(store, kJob, QuickOr(20'000, 1'000'000), "COMPLETE");
}

void FillContainer(BenchStore& store) {
    store.RunBare("DELETE FROM %q%job");
    const int jobs = QuickOr(2'000, 100'000);
    const std::vector<std::string> guids = AddJobs(store, jobs, "MEASURED", "COMPLETE");
    constexpr int kOrphans = 1000;
    AddItems(store, kJob, kOrphans, "COMPLETE");
    AddItems(store, guids.front(), jobs, "COMPLETE");
}

}  // namespace

void RegisterRemoval() {
    for (const Engine& engine : Engines()) {
        const std::string name = "large/" + engine.name + "/";
        Register(name + "RemoveJobAndItems", 1,
                 [engine](benchmark::State& state) { MeasureOnce(state, engine, &FillJob, &RemoveJob); });
        Register(name + "sweep of orphans", 1,
                 [engine](benchmark::State& state) { MeasureOnce(state, engine, &FillContainer, &Sweep); });
    }
}

}  // namespace kxjob::bench

#include <benchmark/benchmark.h>

#include <memory>
#include <stdexcept>

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

/// How many items and jobs there are.
std::vector<Cell> Rows(BenchStore& store) {
    return store.Driver().Run(Statement{
        store.Qualified("SELECT (SELECT COUNT(*) FROM %q%JobItem), (SELECT COUNT(*) FROM %q%job)")});
}

/// What is removed, and by whom.
struct Removal {
    void (*fill)(BenchStore&);
    /// As much of it as the statements depend on.
    void (*fillToRecord)(BenchStore&);
    void (*call)(JobHelper&, const BenchStore&);
};

void MeasureRemoval(benchmark::State& state, const Engine& engine, const Removal& removal) {
    BenchStore driverStore(engine);
    BenchStore libraryStore(engine);
    removal.fillToRecord(driverStore);
    removal.fillToRecord(libraryStore);
    const std::vector<Statement> recorded = StatementsOf(driverStore.Connection(), [&] {
        JobHelper helper;
        removal.call(helper, driverStore);
    });
    // Like the library's, it is not the connection that fills the store.
    const std::unique_ptr<BareDriver> driver = driverStore.NewDriver();
    std::vector<Statement> statements;
    const auto beforeDriver = [&] {
        removal.fill(driverStore);
        statements = WithNewGuids(recorded);
    };
    JobHelper helper;
    MeasurePair(state, {.beforeDriver = beforeDriver,
                        .driver = [&] { Replay(*driver, statements); },
                        .beforeLibrary = [&] { removal.fill(libraryStore); },
                        .library = [&] { removal.call(helper, libraryStore); }});
    if (Rows(driverStore) != Rows(libraryStore)) {
        throw std::runtime_error("the library leaves other rows than its statements");
    }
    state.counters["statements"] = static_cast<double>(recorded.size());
}

void FillNothing(BenchStore& /*store*/) {}

void FillJob(BenchStore& store) {
    AddItems(store, kJob, QuickOr(20'000, 1'000'000), "COMPLETE");
}

std::vector<std::string> OnlyJobs(BenchStore& store) {
    store.RunBare("DELETE FROM %q%job");
    return AddJobs(store, QuickOr(2'000, 100'000), "MEASURED", "COMPLETE");
}

void FillJobs(BenchStore& store) {
    OnlyJobs(store);
}

void FillContainer(BenchStore& store) {
    const std::vector<std::string> jobs = OnlyJobs(store);
    constexpr int kOrphans = 1000;
    store.RunBare("DELETE FROM %q%JobItem");
    AddItems(store, kJob, kOrphans, "COMPLETE");
    AddItems(store, jobs.front(), static_cast<int>(jobs.size()), "COMPLETE");
}

constexpr Removal kJobRemoval = {&FillJob, &FillNothing, &RemoveJob};
constexpr Removal kSweep = {&FillContainer, &FillJobs, &Sweep};

}  // namespace

void RegisterRemoval() {
    const int pairs = QuickOr(5, 1);  // filling a store takes longer than emptying it
    for (const Engine& engine : Engines()) {
        const std::string name = "large/" + engine.name + "/";
        Register(name + "RemoveJobAndItems", pairs,
                 [engine](benchmark::State& state) { MeasureRemoval(state, engine, kJobRemoval); });
        Register(name + "sweep of orphans", pairs,
                 [engine](benchmark::State& state) { MeasureRemoval(state, engine, kSweep); });
    }
}

}  // namespace kxjob::bench

#include <benchmark/benchmark.h>

#include <vector>

#include "bench_store.h"
#include "kxjob/array.h"
#include "kxjob/caller_texts.h"
#include "kxjob/job_helper.h"

// Each pair runs the same statements: by the bare driver, with texts that are ready, and by the library.

namespace kxjob::bench {
namespace {

constexpr int kItems = 10'000;
constexpr int kBatch = 100;

void UpdateJobTaskLockDriver(benchmark::State& state) {
    BenchStore store;
    const std::string sql = std::string("UPDATE kx_jobtask SET lockguid = '") + BenchStore::kJob +
                            "' WHERE jobtaskguid = '" + BenchStore::kTask + "'";
    for (auto _ : state) store.Run(sql);
}
BENCHMARK(UpdateJobTaskLockDriver);

void UpdateJobTaskLockLibrary(benchmark::State& state) {
    BenchStore store;
    JobHelper helper;
    for (auto _ : state) {
        helper.UpdateJobTaskLock(store.ConnectionString(), BenchStore::kQualifier, BenchStore::kTask,
                                 BenchStore::kJob);
    }
}
BENCHMARK(UpdateJobTaskLockLibrary);

void GetJobTasksDriver(benchmark::State& state) {
    BenchStore store;
    const std::string sql =
        std::string(
            "SELECT jobtaskguid, description, jobguid, machine, processid, threadid, lastjobitem, command,"
            " usercontext, jobtaskstateid, startdt, enddt, lockguid FROM kx_jobtask WHERE jobguid = '") +
        BenchStore::kJob + "'";
    for (auto _ : state) benchmark::DoNotOptimize(store.Run(sql));
}
BENCHMARK(GetJobTasksDriver);

void GetJobTasksLibrary(benchmark::State& state) {
    BenchStore store;
    JobHelper helper;
    for (auto _ : state) {
        benchmark::DoNotOptimize(helper.GetJobTasks(store.ConnectionString(), dspSqlite,
                                                    BenchStore::kQualifier, BenchStore::kJob));
    }
}
BENCHMARK(GetJobTasksLibrary);

void CreateSimpleJobItemsDriver(benchmark::State& state) {
    BenchStore store;
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<std::string> statements;
        statements.reserve(kItems);
        for (int i = 0; i < kItems; ++i) {
            statements.push_back(
                std::string("INSERT INTO kx_JobItem (jobguid, jobitemguid, identifier, sequence) VALUES ('") +
                BenchStore::kJob + "', '" + NewGuid() + "', 'item', " + std::to_string(i) + ")");
        }
        state.ResumeTiming();
        for (int i = 0; i < kItems; ++i) {
            if (i % kBatch == 0) store.Run("BEGIN IMMEDIATE");
            store.Run(statements[static_cast<std::size_t>(i)]);
            if (i % kBatch == kBatch - 1) store.Run("COMMIT");
        }
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(CreateSimpleJobItemsDriver)->Unit(benchmark::kMillisecond);

void CreateSimpleJobItemsLibrary(benchmark::State& state) {
    BenchStore store;
    JobHelper helper;
    const Value identifiers = Array::List(std::vector<Value>(kItems, "item"));
    for (auto _ : state) {
        helper.CreateSimpleJobItems(store.ConnectionString(), dspSqlite, BenchStore::kQualifier,
                                    BenchStore::kJob, identifiers);
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}
BENCHMARK(CreateSimpleJobItemsLibrary)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kxjob::bench

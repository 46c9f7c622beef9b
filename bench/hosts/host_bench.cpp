#include "hosts/host_bench.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <optional>
#include <stdexcept>
#include <thread>

#include "hosts/host_processes.h"
#include "kxjob/array.h"
#include "kxjob/caller_texts.h"
#include "kxjob/job_helper.h"
#include "measuring/pair.h"
#include "measuring/registration.h"
#include "stores/bench_store.h"
#include "stores/rows.h"

namespace kxjob::bench {
namespace {

constexpr const char* kType = "MEASURED";
constexpr double kMicroseconds = 1e6;
/// A container with much in it is to be worked on nearly as fast as an empty one.
constexpr double kWantedShare = 0.9;

int ItemCount() {
    return QuickOr(2'000, 20'000);
}

std::string NewJob(BenchStore& store) {
    JobHelper helper;
    const std::string guid = NewGuid();
    helper.CreateJob(store.Connection(), store.Provider(), store.Qualifier(), guid, kType, "measured",
                     NewGuid(), "<parameters/>", ItemCount());
    std::vector<Value> identifiers(static_cast<std::size_t>(ItemCount()), "item");
    helper.CreateSimpleJobItems(store.Connection(), store.Provider(), store.Qualifier(), guid,
                                Array::List(std::move(identifiers)));
    helper.UpdateJobStatus(store.Connection(), store.Provider(), store.Qualifier(), guid, "QUEUED");
    return guid;
}

void RequireComplete(BenchStore& store, const std::string& job) {
    const Statement state{"SELECT jobstateid FROM " + store.Qualifier() + "job WHERE jobguid = '" + job +
                          "'"};
    if (std::get<std::string>(store.Driver().Run(state).at(0)) != "COMPLETE") {
        throw std::runtime_error("the hosts have ended, and the job has not");
    }
}

/// How many statements the server has been sent since it began; none where there is no server to ask.
std::optional<double> StatementsSoFar(BenchStore& store) {
    if (store.Provider() == dspMariaDb) {
        return std::stod(std::get<std::string>(
            store.Driver().Run(Statement{"SHOW GLOBAL STATUS LIKE 'Questions'"}).at(1)));
    }
    if (store.Provider() == dspPostgreSql) {  // outside a transaction each exchange is one
        return static_cast<double>(std::get<std::int64_t>(
            store.Driver()
                .Run(Statement{"SELECT xact_commit FROM pg_stat_database WHERE datname = current_database()"})
                .at(0)));
    }
    return std::nullopt;
}

struct HostRun {
    double seconds = 0;     // from the start of the processes to their end
    double statements = 0;  // an item; 0 where nobody counts
};

HostRun RunHosts(BenchStore& store, int hosts) {
    const std::string job = NewJob(store);
    const std::optional<double> before = StatementsSoFar(store);
    HostRun run;
    run.seconds = Seconds([&] { HostProcesses(store, hosts).WaitForEnd(); });
    RequireComplete(store, job);
    if (before) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));  // PostgreSQL counts once a second
        run.statements = (*StatementsSoFar(store) - *before) / ItemCount();
    }
    return run;
}

/// What nobody can do without, by key and one by one: an item is claimed, and its end is written.
double SecondsByDriver(BenchStore& store) {
    const std::string job = NewGuid();
    AddItems(store, job, ItemCount(), "");
    const std::vector<Cell> items = store.Driver().Run(
        Statement{"SELECT jobitemguid FROM " + store.Qualifier() + "JobItem WHERE jobguid = '" + job + "'"});
    return Seconds([&] {
        for (const Cell& item : items) {
            const std::string where = "' WHERE jobitemguid = '" + std::get<std::string>(item) + "'";
            const std::string update = "UPDATE " + store.Qualifier() + "JobItem SET jobitemstateid = '";
            store.Driver().Run(Statement{update + "RUNNING', jobtaskguid = '" + job + where});
            store.Driver().Run(Statement{update + "COMPLETE', enddt = '2026-03-01T09:31:00.000Z" + where});
        }
    });
}

void MeasureHosts(benchmark::State& state, const Engine& engine, int hosts) {
    BenchStore store(engine);
    AddType(store, kType, HostProcesses::kComponent);
    for (auto _ : state) {
        const double driver = SecondsByDriver(store);
        const HostRun run = RunHosts(store, hosts);
        state.SetIterationTime(run.seconds);
        state.counters["driver_us"] = driver * kMicroseconds / ItemCount();
        state.counters["library_us"] = run.seconds * kMicroseconds / ItemCount();
        state.counters["ratio"] = run.seconds / driver;
        state.counters["items_per_second"] = ItemCount() / run.seconds;
        if (run.statements > 0) state.counters["statements_per_item"] = run.statements;
    }
}

void MeasureFullContainer(benchmark::State& state, const Engine& engine) {
    const int finished = QuickOr(50'000, 1'000'000);
    constexpr int kFinishedJobs = 10;
    BenchStore empty(engine);
    BenchStore full(engine);
    for (BenchStore* store : {&empty, &full}) AddType(*store, kType, HostProcesses::kComponent);
    for (const std::string& job : AddJobs(full, kFinishedJobs, kType, "COMPLETE")) {
        AddItems(full, job, finished / kFinishedJobs, "COMPLETE");
    }

    std::vector<double> rates;
    std::vector<double> shares;
    for (auto _ : state) {
        const double seconds = RunHosts(full, 1).seconds;
        shares.push_back(RunHosts(empty, 1).seconds / seconds);
        rates.push_back(ItemCount() / seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["finished_items"] = finished;
    state.counters["items_per_second"] = Quantile(rates, 0.5);
    state.counters["ratio"] = Quantile(shares, 0.5);
    state.counters["at_least"] = kWantedShare;
}

}  // namespace

void RegisterHosts() {
    for (const Engine& engine : Engines()) {
        const std::string name = "host/" + engine.name + "/";
        for (const int hosts : {1, 2, 4}) {
            Register(name + std::to_string(hosts) + (hosts == 1 ? " process" : " processes"), 1,
                     [engine, hosts](benchmark::State& state) { MeasureHosts(state, engine, hosts); });
        }
        Register(name + "full container", QuickOr(1, 7),
                 [engine](benchmark::State& state) { MeasureFullContainer(state, engine); });
    }
}

}  // namespace kxjob::bench

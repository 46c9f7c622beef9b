#include "bulk/bulk_bench.h"

#include <benchmark/benchmark.h>

#include "bulk/bulk_road.h"
#include "kxjob/array.h"
#include "kxjob/caller_texts.h"
#include "kxjob/job_helper.h"
#include "measuring/pair.h"
#include "measuring/registration.h"

namespace kxjob::bench {
namespace {

constexpr const char* kJob = "{00000000-0000-4000-8000-00000000A001}";
/// The library's.
constexpr std::size_t kBatch = 100;
/// At least half as fast as the fastest.
constexpr double kWantedRatio = 2;

enum class Road { Prepared, Fastest };

std::unique_ptr<BulkRoad> OpenRoad(const BenchStore& store, Road road) {
    const bool prepared = road == Road::Prepared;
    switch (store.Provider()) {
        case dspSqlite: return PreparedSqlite(store, prepared ? kBatch : std::size_t(-1));
        case dspPostgreSql: return prepared ? PreparedOdbc(store, kBatch) : PostgreSqlCopy(store);
        default: return prepared ? PreparedOdbc(store, kBatch) : MultiRowInsert(store);
    }
}

/// Leaves nothing of them behind that would slow the next ones down.
void ForgetItems(BenchStore& store) {
    store.RunByLibrary(store.Provider() == dspSqlite ? "DELETE FROM %q%JobItem"
                                                     : "TRUNCATE TABLE %q%JobItem");
}

void MeasureBulk(benchmark::State& state, const Engine& engine, int count, Road road) {
    BenchStore driverStore(engine);
    BenchStore libraryStore(engine);
    const std::unique_ptr<BulkRoad> driver = OpenRoad(driverStore, road);
    JobHelper helper;
    std::vector<NewItem> items(static_cast<std::size_t>(count));
    std::vector<Value> identifiers;
    for (NewItem& item : items) {
        item.identifier = NewGuid();
        identifiers.emplace_back(item.identifier);
    }
    const Value list = Array::List(std::move(identifiers));

    const auto beforeDriver = [&] {
        ForgetItems(driverStore);
        for (NewItem& item : items) item.guid = NewGuid();
    };
    MeasurePair(state, {.beforeDriver = beforeDriver,
                        .driver = [&] { driver->Insert(kJob, items); },
                        .beforeLibrary = [&] { ForgetItems(libraryStore); },
                        .library =
                            [&] {
                                helper.CreateSimpleJobItems(libraryStore.Connection(),
                                                            libraryStore.Provider(), libraryStore.Qualifier(),
                                                            kJob, list);
                            }});
    state.counters["items_per_second"] = 1e6 * count / state.counters["library_us"].value;
    if (road == Road::Fastest) state.counters["at_most"] = kWantedRatio;
}

}  // namespace

void RegisterBulk() {
    struct Size {
        int count;
        int pairs;
    };
    const std::vector<Size> sizes = IsQuick() ? std::vector<Size>{{100, 50}, {10'000, 2}}
                                              : std::vector<Size>{{100, 300}, {10'000, 11}, {1'000'000, 1}};
    for (const Engine& engine : Engines()) {
        for (const Size& size : sizes) {
            for (const Road road : {Road::Prepared, Road::Fastest}) {
                const std::string name = "bulk/" + engine.name + "/" + std::to_string(size.count) +
                                         " items, " + (road == Road::Prepared ? "prepared" : "fastest");
                Register(name, size.pairs, [engine, size, road](benchmark::State& state) {
                    MeasureBulk(state, engine, size.count, road);
                });
            }
        }
    }
}

}  // namespace kxjob::bench

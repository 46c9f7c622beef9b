#include <benchmark/benchmark.h>

#include <functional>

#include "kxjob/array.h"
#include "kxjob/job_helper.h"
#include "large/large_bench.h"
#include "measuring/heap.h"
#include "measuring/pair.h"
#include "measuring/registration.h"
#include "recording/statement_tap.h"
#include "stores/bench_store.h"
#include "stores/rows.h"

namespace kxjob::bench {
namespace {

constexpr const char* kJob = "{00000000-0000-4000-8000-00000000A001}";
constexpr double kWantedRatio = 1.3;
/// A row of a result, beyond its text.
constexpr double kWantedBytes = 200;

enum class Result { kAllRows, kFewRows };

using Call = std::function<Value(JobHelper&, const BenchStore&)>;

std::size_t TextBytes(const RowArray& rows) {
    std::size_t bytes = 0;
    for (std::int32_t row = 0; row < rows.Rows(); ++row) {
        for (std::int32_t column = 0; column < rows.Columns(); ++column) {
            const Value& cell = rows.Cell(column, row);
            if (cell.IsText()) bytes += cell.Text().size();
        }
    }
    return bytes;
}

/// What a row of a result costs beyond its text, while the caller holds it and while it was being read.
void MeasureMemory(benchmark::State& state, BenchStore& store, const Call& call) {
    JobHelper helper;
    const HeapCount heap;
    const Value rows = call(helper, store);
    const HeapUse use = heap.SoFar();
    const double count = rows.Rows().Rows();
    const auto text = static_cast<double>(TextBytes(rows.Rows()));
    state.counters["rows"] = count;
    state.counters["bytes_per_row"] = (static_cast<double>(use.bytesHeld) - text) / count;
    state.counters["bytes_at_most"] = kWantedBytes;
    state.counters["most_bytes_per_row"] = (static_cast<double>(use.mostBytesHeld) - text) / count;
}

void MeasureReading(benchmark::State& state, BenchStore& store, const Call& call) {
    const std::vector<Statement> statements = StatementsOf(store.Connection(), [&] {
        JobHelper helper;
        call(helper, store);
    });
    JobHelper helper;
    std::vector<Cell> cells;
    Value rows;
    MeasurePair(state, {.beforeDriver = [&] { rows = {}; },
                        .driver = [&] { cells = store.Driver().Run(statements.at(0)); },
                        .beforeLibrary = [&] { cells = std::vector<Cell>(); },
                        .library = [&] { rows = call(helper, store); }});
    state.counters["statements"] = static_cast<double>(statements.size());
}

/// Reads only, so that one store is enough.
void MeasureRows(benchmark::State& state, const Engine& engine, void (*fill)(BenchStore&), Result result,
                 const Call& call) {
    BenchStore store(engine);
    fill(store);
    MeasureReading(state, store, call);
    if (result == Result::kFewRows) return;
    state.counters["at_most"] = kWantedRatio;
    MeasureMemory(state, store, call);
}

void FillJob(BenchStore& store) {
    AddItems(store, kJob, QuickOr(20'000, 1'000'000), "COMPLETE");
}

void FillContainer(BenchStore& store) {
    AddJobs(store, QuickOr(20'000, 1'000'000), "MEASURED", "COMPLETE");
}

void RegisterRows(const Engine& engine, const std::string& subject, void (*fill)(BenchStore&), Result result,
                  const Call& call) {
    Register("large/" + engine.name + "/" + subject, QuickOr(7, 3),
             [=](benchmark::State& state) { MeasureRows(state, engine, fill, result, call); });
}

}  // namespace

void RegisterReading() {
    for (const Engine& engine : Engines()) {
        RegisterRows(engine, "GetJobItems", &FillJob, Result::kAllRows,
                     [](JobHelper& helper, const BenchStore& store) {
                         return helper.GetJobItems(store.Connection(), store.Provider(), store.Qualifier(),
                                                   kJob);
                     });
        RegisterRows(engine, "JobItemsAtState", &FillJob, Result::kFewRows,
                     [](JobHelper& helper, const BenchStore& store) {
                         return helper.JobItemsAtState(store.Connection(), store.Qualifier(), kJob);
                     });
        RegisterRows(engine, "GetJob", &FillContainer, Result::kAllRows,
                     [](JobHelper& helper, const BenchStore& store) {
                         return helper.GetJob(store.Connection(), store.Provider(), store.Qualifier());
                     });
    }
}

}  // namespace kxjob::bench

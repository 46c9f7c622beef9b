#include "counting/call_count.h"

#include <valgrind/callgrind.h>

#include <fstream>
#include <functional>

#include "calls/call_pair.h"
#include "calls/container.h"
#include "measuring/heap.h"

namespace kxjob::bench {
namespace {

constexpr int kRuns = 10;

void Count(std::ofstream& out, const std::string& method, const std::string& side,
           const std::function<void()>& before, const std::function<void()>& run) {
    std::size_t allocations = 0;
    for (int i = 0; i < kRuns; ++i) {
        before();
        const HeapCount heap;
        CALLGRIND_TOGGLE_COLLECT;
        run();
        CALLGRIND_TOGGLE_COLLECT;
        allocations += heap.SoFar().allocations;
    }
    CALLGRIND_DUMP_STATS;
    out << method << '\t' << side << '\t' << kRuns << '\t' << static_cast<double>(allocations) / kRuns
        << '\n';
}

}  // namespace

void CountCalls(const std::string& file) {
    RegisterContainerComponent();
    std::ofstream out(file);
    for (const testing_support::MethodCall& method : testing_support::EveryMethod()) {
        CallPair calls({"sqlite", dspSqlite}, method);
        if (calls.StatementCount() > 0) {
            Count(
                out, method.name, "driver", [&] { calls.ResetDriver(); }, [&] { calls.RunDriver(); });
        }
        Count(
            out, method.name, "library", [&] { calls.ResetLibrary(); }, [&] { calls.RunLibrary(); });
    }
}

}  // namespace kxjob::bench

#include <benchmark/benchmark.h>

#include <string_view>

#include "bulk/bulk_bench.h"
#include "calls/call_bench.h"
#include "counting/call_count.h"
#include "hosts/host_bench.h"
#include "large/large_bench.h"
#include "scheduling/scheduling_bench.h"

int main(int argc, char** argv) {
    if (argc == 3 && std::string_view(argv[1]) == "--count") {
        kxjob::bench::CountCalls(argv[2]);
        return 0;
    }
    kxjob::bench::RegisterCalls();
    kxjob::bench::RegisterBulk();
    kxjob::bench::RegisterReading();
    kxjob::bench::RegisterRemoval();
    kxjob::bench::RegisterScheduling();
    kxjob::bench::RegisterHosts();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}

#include <benchmark/benchmark.h>

#include "calls/call_bench.h"

int main(int argc, char** argv) {
    kxjob::bench::RegisterCalls();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}

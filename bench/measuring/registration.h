#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace kxjob::bench {

/// Registers a benchmark "KIND/ENGINE/SUBJECT" that runs so many times and says itself how long it took. What
/// it throws becomes its error, and the others go on.
void Register(const std::string& name, int iterations, std::function<void(benchmark::State&)> measure);

}  // namespace kxjob::bench

#pragma once

#include <benchmark/benchmark.h>

#include <vector>

#include "driver/bare_driver.h"

namespace kxjob::bench {

/// Runs recorded statements one after the other; their rows are read and let go.
inline void Replay(BareDriver& driver, const std::vector<Statement>& statements) {
    for (const Statement& statement : statements) benchmark::DoNotOptimize(driver.Run(statement));
}

}  // namespace kxjob::bench

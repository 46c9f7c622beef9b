#pragma once

#include <string>
#include <vector>

#include "kxjob/data_store_provider.h"

namespace kxjob::bench {

/// A database system to measure on.
struct Engine {
    std::string name;
    DataStoreProvider provider;
    std::string connectionString = {};  // empty: a file of its own for every store
};

/// Those that KXJOB_BENCH_ENGINES names (all three without it) and that are there: a server is where
/// KXJOB_POSTGRESQL or KXJOB_MARIADB says.
std::vector<Engine> Engines();

/// Whether KXJOB_BENCH_QUICK asks for the small sizes.
bool IsQuick();

/// The first with KXJOB_BENCH_QUICK, else the second.
template <typename Number>
Number QuickOr(Number quick, Number full) {
    return IsQuick() ? quick : full;
}

}  // namespace kxjob::bench

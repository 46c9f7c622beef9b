#pragma once

#include <cstddef>
#include <string>

#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// What a worker host is told.
struct WorkOptions {
    StoreConnection store;
    int threads = 1;
    std::string type;  // empty: every type that can be created here
    bool once = false;
    bool untilEmpty = false;
    double leaseSeconds = 60;
    double pollSeconds = 1;
    std::size_t mostInALot = 200;
    bool json = false;
};

}  // namespace kxjob::command

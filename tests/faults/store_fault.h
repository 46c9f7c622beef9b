#pragma once

#include <functional>
#include <string>
#include <vector>

#include "faults/fault_world.h"
#include "faults/store_use.h"

namespace kxjob::testing_support {

/// Something that happens to a store in the middle of a call.
struct StoreFault {
    std::string name;
    /// What a call does to the store for the fault to fail it.
    bool (*fails)(StoreUse use);
    /// What the error's description may begin with.
    std::vector<std::string> states;
    std::function<void()> prepare;
    /// Takes how many writes still reach the disk, where the fault `isGradual`.
    std::function<void(int writesBefore)> strike;
    std::function<void()> mend;
    /// Whether nothing of it is left then; else the next use of the store meets it.
    bool isOverWhenMended = true;
    bool isGradual = false;
};

/// The file is taken away, or the server ends the library's session. Any use of the store fails.
StoreFault ConnectionCut(FaultWorld& world);

/// The system has no room for another byte, from some write on. Only writing fails. For the engine that is
/// linked in.
StoreFault DiskFull();

}  // namespace kxjob::testing_support

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "faults/published_writes.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/job_helper.h"

namespace kxjob::testing_support {

/// One road through the library whose every call fails in turn.
struct FaultCase {
    std::string name;
    /// What errors are told under.
    std::string className;
    /// Whether connection string and qualifier are left out, so that the configuration gives them.
    bool fromConfiguration = false;
    /// A statement that readies the store, where its usual rows lead elsewhere.
    std::string before = {};
    std::vector<Write> writes = {};
    /// Whether only the calls that use the store fail: the others are many of the same.
    bool isLong = false;
    std::function<void(JobHelper& helper, const std::string& connectionString, DataStoreProvider provider,
                       const std::string& qualifier)>
        call;
};

/// The 35 methods; again from the configuration those that can; the roads that their calls do not take; and
/// the members of DurationTimer.
std::vector<FaultCase> EveryFaultCase();

}  // namespace kxjob::testing_support

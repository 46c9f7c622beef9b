#pragma once

#include <functional>
#include <string>
#include <vector>

#include "faults/fault_table.h"
#include "faults/fault_world.h"
#include "faults/store_fault.h"

namespace kxjob::testing_support {

inline constexpr const char* kErrorRaised = "error raised";

/// Lets every call of one case fail in turn. What is wrong fails the test, and is not counted as survived.
class CaseSweep {
public:
    /// Performs the case without a fault and with all checks.
    CaseSweep(FaultWorld& world, const FaultCase& given, FaultTable& table);

    /// The collaborator raises an error instead of what it does.
    void FailEveryCall();
    /// Every call that the fault fails is met by it, a gradual one after each write of the call. Where there
    /// is none, the case must not notice it.
    void MeetEveryCall(const StoreFault& fault);
    /// Calls that are not said to use the store do without it.
    void TakeTheStoreFromOtherCalls(const StoreFault& fault);

private:
    using Faults = std::vector<std::string>;
    using Strike = std::function<void()>;

    /// The store as it is when so many of the published writes are done.
    void PictureEveryWrite();
    FaultRun StrikeAt(int call, const Strike& strike);
    Faults WhatIsWrong(const FaultRun& run, int call);
    Faults WhatIsWrongWithoutFault(const FaultRun& run);
    Faults WhatIsLeft(const FaultRun& run);
    StoreUse UseOf(int call) const { return uses_.at(static_cast<std::size_t>(call) - 1); }
    /// False when the fault came too late for the call.
    bool MeetCall(const StoreFault& fault, int call, int writesBefore);
    void CheckPicture(std::size_t writesDone, Faults& faults);
    void Report(const Faults& faults, const std::string& when);

    FaultWorld& world_;
    const FaultCase& given_;
    FaultTable& table_;
    std::vector<StorePicture> pictures_;
    std::vector<StoreUse> uses_;  // of call 1, 2, 3 ...
    std::vector<std::string> calls_;
    int reported_ = 0;
};

}  // namespace kxjob::testing_support

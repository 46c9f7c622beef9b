#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kxjob/data_store_provider.h"
#include "kxjob/job_helper.h"

namespace kxjob::testing_support {

// The keys that the calls below use. On a real store, the rows with these keys are to be there before, the
// job with `kLockGuid` as its editor lock; `kNewJobGuid` is the one that CreateJob brings.
inline constexpr const char* kJobGuid = "{00000000-0000-4000-8000-00000000A001}";
inline constexpr const char* kNewJobGuid = "{00000000-0000-4000-8000-00000000A002}";
inline constexpr const char* kItemGuid = "{00000000-0000-4000-8000-00000000B001}";
inline constexpr const char* kIdentifierGuid = "{00000000-0000-4000-8000-00000000B002}";
inline constexpr const char* kOtherIdentifierGuid = "{00000000-0000-4000-8000-00000000B003}";
inline constexpr const char* kTaskGuid = "{00000000-0000-4000-8000-00000000C001}";
inline constexpr const char* kLockGuid = "{00000000-0000-4000-8000-00000000D001}";
inline constexpr const char* kOtherLockGuid = "{00000000-0000-4000-8000-00000000D002}";
inline constexpr const char* kStateGuid = "{00000000-0000-4000-8000-00000000E001}";
inline constexpr const char* kProductionGuid = "{00000000-0000-4000-8000-00000000E002}";
inline constexpr const char* kDevelopmentGuid = "{00000000-0000-4000-8000-00000000E003}";
inline constexpr const char* kJobType = "NIGHTLY";

/// One public method of JobHelper, and a call of it with sound arguments. A method without one of the three
/// connection arguments ignores it.
struct MethodCall {
    std::string name;
    /// Whether an empty connection string or qualifier is replaced from the configuration.
    bool hasConfigurationFallback = false;
    std::function<void(JobHelper& helper, const std::string& connectionString, DataStoreProvider provider,
                       const std::string& qualifier)>
        call;
};

/// All 35 of them, in the order in which they are declared.
const std::vector<MethodCall>& EveryMethod();

/// One member of DurationTimer: the call creates a timer and reaches the member on it.
struct TimerCall {
    std::string name;
    std::function<void()> call;
};

/// The constructor, under the name that its errors carry ("Class_Initialize"), Start and Duration.
const std::vector<TimerCall>& EveryTimerMember();

}  // namespace kxjob::testing_support

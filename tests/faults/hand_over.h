#pragma once

#include <string>
#include <vector>

#include "kxjob/call_journal.h"

namespace kxjob::testing_support {

/// What is wrong with what happened from the failed call on. Right is: each running method, the innermost
/// first, tells the error to a new "DebugTools_83.Helper" once and raises it; nothing else is called.
/// `raised` is the error that reached the caller.
std::vector<std::string> FaultsOfHandOver(const std::vector<JournalEvent>& events,
                                          const std::string& className, const AutomationError& raised);

/// The first call that failed; null when none did.
const JournalEvent* FailedCall(const std::vector<JournalEvent>& events);

}  // namespace kxjob::testing_support

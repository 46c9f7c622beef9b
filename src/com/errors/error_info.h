#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>

#include "com/handles/text.h"
#include "kxjob/automation_error.h"

namespace kxjob {

/// The status that a number becomes: itself, or for one that would be taken for success (a runtime error such
/// as 5) the automation runtime's form of it.
HRESULT FailedStatus(std::int32_t number) noexcept;

/// The error that a failed status stands for: takes the thread's error object, if there is one, else the
/// system's words.
AutomationError ErrorOf(HRESULT status);
/// The error in what a late-bound call filled in, which is released.
AutomationError ErrorOf(EXCEPINFO& exception);
/// Fills in what a late-bound client gets about a failed call, from the thread's error object, which is taken
/// even where the client does not want it (null).
void FillException(HRESULT status, EXCEPINFO* exception) noexcept;

}  // namespace kxjob

#pragma once

#include <ole2.h>
#include <windows.h>

namespace kxjob {

/// For whom classes are registered: everybody on the machine, or the user who asks.
enum class Audience { Machine, User };

/// Writes the classes of this DLL, and its type library, into the registry. Raises what the system refuses;
/// what was written by then is taken out again.
void RegisterServer(Audience audience);
/// Takes out all that RegisterServer wrote. What is not there is no error.
void UnregisterServer(Audience audience);

}  // namespace kxjob

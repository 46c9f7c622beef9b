#include "defaults/system/random_bytes.h"

#include <windows.h>
// After windows.h, whose types it uses.
#include <ntsecapi.h>

#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {

// RtlGenRandom is the source behind the system's cryptographic providers, in a library that is in every
// process anyway; the newer call for the same bytes would bring one more library along.
void FillWithRandomBytes(std::span<unsigned char> bytes) {
    if (RtlGenRandom(bytes.data(), static_cast<ULONG>(bytes.size())) == 0)
        RaiseRuntimeError(error_number::kInternal, "the system's random source gives nothing");
}

}  // namespace kxjob

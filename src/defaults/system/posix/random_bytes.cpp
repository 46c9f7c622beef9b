#include "defaults/system/random_bytes.h"

#include <sys/random.h>

#include <cerrno>
#include <cstddef>

#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {

void FillWithRandomBytes(std::span<unsigned char> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = getrandom(bytes.data(), bytes.size(), 0);
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            RaiseRuntimeError(error_number::kInternal, "the system's random source gives nothing");
        }
    }
}

}  // namespace kxjob

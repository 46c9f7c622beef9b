#include "defaults/system/own_ids.h"

#include <windows.h>

namespace kxjob {

std::int32_t OwnProcessId() {
    return static_cast<std::int32_t>(GetCurrentProcessId());
}

std::int32_t OwnThreadId() {
    return static_cast<std::int32_t>(GetCurrentThreadId());
}

}  // namespace kxjob

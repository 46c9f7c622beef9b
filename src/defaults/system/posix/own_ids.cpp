#include "defaults/system/own_ids.h"

#include <unistd.h>

namespace kxjob {

std::int32_t OwnProcessId() {
    return getpid();
}

std::int32_t OwnThreadId() {
    return gettid();
}

}  // namespace kxjob

#pragma once

#include <cstdint>

namespace kxjob {

/// The operating system's numbers for the process and the thread that ask.
std::int32_t OwnProcessId();
std::int32_t OwnThreadId();

}  // namespace kxjob

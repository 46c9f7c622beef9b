#pragma once

#include <span>

namespace kxjob {

/// Fills `bytes` from the operating system's random source, which nobody can guess and no two processes
/// share. Raises Internal error when it gives nothing.
void FillWithRandomBytes(std::span<unsigned char> bytes);

}  // namespace kxjob

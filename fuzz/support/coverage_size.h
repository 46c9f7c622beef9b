#pragma once

#include <cstddef>

namespace kxjob::fuzz {

/// How many counters a watched program in another process shares with the fuzzer: whole pages of memory.
inline constexpr int kCoverageBits = 15;
inline constexpr std::size_t kCoverageSize = std::size_t{1} << kCoverageBits;

}  // namespace kxjob::fuzz

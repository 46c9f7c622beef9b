#pragma once

#include <string>

namespace kxjob::fuzz {

/// From now on, what runs is counted in this file, which the fuzzer shares: a byte for each place, by chance.
/// Ends the program when the file cannot be shared.
void ShareCoverage(const std::wstring& path);

}  // namespace kxjob::fuzz

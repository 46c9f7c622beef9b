#include "windows/coverage_map.h"

#include <windows.h>

#include <cstdint>

#include "support/coverage_size.h"
#include "support/fuzz_input.h"

namespace {

std::uint8_t* counters = nullptr;

}  // namespace

/// The compiler calls it at the begin of every block of what is watched; this file is not.
extern "C" void __sanitizer_cov_trace_pc() {
    if (counters == nullptr) return;
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_return_address(0));
    const auto start = reinterpret_cast<std::uintptr_t>(&__sanitizer_cov_trace_pc);
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
    constexpr int kUnused = 64 - kxjob::fuzz::kCoverageBits;
    std::uint8_t& counter = counters[(here - start) * kSpread >> kUnused];
    if (counter < UINT8_MAX) ++counter;
}

namespace kxjob::fuzz {

void ShareCoverage(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    Require(file != INVALID_HANDLE_VALUE, "the file of the coverage opens");
    const HANDLE mapping = CreateFileMappingW(file, nullptr, PAGE_READWRITE, 0, kCoverageSize, nullptr);
    Require(mapping != nullptr, "the file of the coverage can be mapped");
    counters = static_cast<std::uint8_t*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, kCoverageSize));
    Require(counters != nullptr, "the file of the coverage is mapped");
}

}  // namespace kxjob::fuzz

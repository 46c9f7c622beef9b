#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace kxjob {

/// One record of what a driver says about a call.
struct Diagnostic {
    std::string state;
    std::int32_t native = 0;
    std::string message;
};

/// The record that says why a call failed: the first that is more than a warning (class 01), else the first;
/// its message without line breaks at its end. Without any record it says that there is none.
Diagnostic Decisive(std::span<const Diagnostic> records);

}  // namespace kxjob

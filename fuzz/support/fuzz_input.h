#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kxjob::fuzz {

/// An input as its lines, so that the kept ones are text. Inside a line, the byte 0x1F stands for a line
/// feed.
std::vector<std::string> Lines(const std::uint8_t* data, std::size_t size);

/// Says what does not hold, and ends the program: the engine keeps the input.
[[noreturn]] void Fail(std::string_view what);
inline void Require(bool holds, std::string_view what) {
    if (!holds) Fail(what);
}

}  // namespace kxjob::fuzz

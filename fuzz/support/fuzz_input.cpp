#include "support/fuzz_input.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace kxjob::fuzz {

std::vector<std::string> Lines(const std::uint8_t* data, std::size_t size) {
    constexpr char kLineFeedInside = '\x1F';
    std::vector<std::string> lines(1);
    for (std::size_t i = 0; i < size; ++i) {
        const auto character = static_cast<char>(data[i]);
        if (character == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += character == kLineFeedInside ? '\n' : character;
        }
    }
    return lines;
}

void Fail(std::string_view what) {
    static_cast<void>(std::fprintf(stderr, "FAILED: %.*s\n", static_cast<int>(what.size()), what.data()));
    std::abort();
}

}  // namespace kxjob::fuzz

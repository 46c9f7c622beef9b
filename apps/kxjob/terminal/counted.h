#pragma once

#include <concepts>
#include <string>

namespace kxjob::command {

/// "1 item", "3 items".
std::string Counted(std::integral auto count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace kxjob::command

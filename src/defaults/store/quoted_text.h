#pragma once

#include <cstddef>
#include <string_view>

namespace kxjob {

/// Behind the text whose quote stands at `place`: its end is the same quote again, and a doubled one is none.
/// npos when it does not end.
inline std::size_t EndOfQuoted(std::string_view sql, std::size_t place) {
    const char quote = sql[place];
    for (std::size_t end = place + 1;; end += 2) {
        end = sql.find(quote, end);
        if (end == std::string_view::npos) return end;
        const bool isDoubled = end + 1 < sql.size() && sql[end + 1] == quote;
        if (!isDoubled) return end + 1;
    }
}

}  // namespace kxjob

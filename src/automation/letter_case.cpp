#include "automation/letter_case.h"

#include <algorithm>

namespace kxjob {

std::string FoldedCase(std::string_view text) {
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return folded;
}

}  // namespace kxjob

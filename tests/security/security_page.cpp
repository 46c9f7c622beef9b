#include "security/security_page.h"

#include <algorithm>
#include <fstream>

namespace kxjob::testing_support {

const std::vector<std::string>& SecurityPage() {
    static const std::vector<std::string> page = [] {
        std::vector<std::string> lines;
        std::ifstream in(KXJOB_PROJECT "/SECURITY.md");
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return lines;
    }();
    return page;
}

std::vector<std::string> CodeBlockOf(const std::vector<std::string>& page, const std::string& title) {
    constexpr const char* kIndentation = "    ";
    const auto isTitle = [&](const std::string& line) { return line.starts_with("**" + title); };
    const auto isCode = [&](const std::string& line) { return line.starts_with(kIndentation); };
    const auto start = std::find_if(std::find_if(page.begin(), page.end(), isTitle), page.end(), isCode);
    std::vector<std::string> block;
    for (auto line = start; line != page.end() && isCode(*line); ++line) block.push_back(line->substr(4));
    return block;
}

}  // namespace kxjob::testing_support

#include "defaults/store/script_statements.h"

#include <cstddef>

namespace kxjob {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// Where the ";" stands that ends the first statement; the length of the script when nothing ends it.
std::size_t EndOfFirst(std::string_view script) {
    std::size_t end = script.find(';');
    while (end != std::string_view::npos) {
        const std::string_view behind = script.substr(end + 1);
        if (behind.empty() || behind.starts_with('\n') || behind.starts_with("\r\n")) return end;
        end = script.find(';', end + 1);
    }
    return script.size();
}

}  // namespace

std::vector<std::string> ScriptStatements(std::string_view script) {
    std::vector<std::string> statements;
    while (!script.empty()) {
        const std::size_t end = EndOfFirst(script);
        const std::string_view statement = script.substr(0, end);
        const std::size_t first = statement.find_first_not_of(kBlanks);
        if (first != std::string_view::npos) statements.emplace_back(statement.substr(first));
        script.remove_prefix(end < script.size() ? end + 1 : end);
    }
    return statements;
}

}  // namespace kxjob

#include "defaults/configuration/configuration_document.h"

#include <algorithm>
#include <cstddef>

#include "automation/letter_case.h"
#include "defaults/configuration/configuration_error.h"
#include "defaults/text/trimmed.h"

namespace kxjob {
namespace {

/// A line up to its comment: a "#" that begins it or stands behind a blank. A carriage return is one, as at
/// the ends of keys and values.
std::string_view WithoutComment(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r";
    std::size_t mark = line.find('#');
    while (mark != std::string_view::npos && mark > 0 &&
           kBlanks.find(line[mark - 1]) == std::string_view::npos) {
        mark = line.find('#', mark + 1);
    }
    return line.substr(0, mark);
}

}  // namespace

ConfigurationDocument::ConfigurationDocument(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        TakeLine(Trimmed(WithoutComment(text.substr(0, length))), number);
        text.remove_prefix(std::min(length + 1, text.size()));
    }
}

void ConfigurationDocument::TakeLine(std::string_view line, std::size_t number) {
    if (line.empty()) return;
    const std::size_t equals = line.find('=');
    const std::string_view key = Trimmed(line.substr(0, equals));
    if (equals == std::string_view::npos || key.empty()) {
        RaiseConfigurationError("Line " + std::to_string(number) +
                                " of the configuration is not of the form: key = value");
    }
    values_.insert_or_assign(FoldedCase(key), std::string(Trimmed(line.substr(equals + 1))));
}

std::optional<std::string> ConfigurationDocument::Find(std::string_view key) const {
    const auto found = values_.find(FoldedCase(key));
    if (found == values_.end() || found->second.empty()) return std::nullopt;
    return found->second;
}

std::vector<std::string> ConfigurationDocument::Keys() const {
    std::vector<std::string> keys;
    keys.reserve(values_.size());
    for (const auto& [key, value] : values_) keys.push_back(key);
    std::ranges::sort(keys);
    return keys;
}

}  // namespace kxjob

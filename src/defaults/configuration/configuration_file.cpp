#include "defaults/configuration/configuration_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <fstream>

#include "defaults/configuration/configuration_error.h"
#include "defaults/configuration/environment_variable.h"
#include "defaults/configuration/usual_places.h"

namespace kxjob {
namespace {

/// A name in UTF-8 as the file system takes it.
std::filesystem::path PathOf(const std::string& name) {
    return std::u8string(name.begin(), name.end());
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(PathOf(path), std::ios::binary);
    std::string text;
    std::array<char, 4096> piece{};
    while (file.read(piece.data(), piece.size()) || file.gcount() > 0) {
        text.append(piece.data(), static_cast<std::size_t>(file.gcount()));
    }
    if (!file.is_open() || file.bad())
        RaiseConfigurationError("The configuration file " + path + " cannot be read");
    return text;
}

bool IsThere(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(PathOf(path), ignored);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

}  // namespace

std::vector<std::string> ConfigurationPlaces() {
    const std::string named = VariableValue("KXJOB_CONFIG");
    if (!named.empty()) return {named};
    return UsualPlaces();
}

std::optional<std::string> FirstFileAmong(const std::vector<std::string>& places) {
    const auto first = std::ranges::find_if(places, IsThere);
    return first == places.end() ? std::nullopt : std::optional(*first);
}

std::optional<std::string> FirstTextAmong(const std::vector<std::string>& places) {
    const std::optional<std::string> file = FirstFileAmong(places);
    return file ? std::optional(ReadWhole(*file)) : std::nullopt;
}

std::optional<std::string> ConfigurationText() {
    std::optional<std::string> text = FirstTextAmong(ConfigurationPlaces());
    const std::string named = VariableValue("KXJOB_CONFIG");
    if (!text && !named.empty()) {
        RaiseConfigurationError("KXJOB_CONFIG names the configuration file " + named +
                                ", which cannot be read");
    }
    return text;
}

}  // namespace kxjob

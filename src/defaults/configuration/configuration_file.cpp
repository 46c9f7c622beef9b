#include "defaults/configuration/configuration_file.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "defaults/configuration/configuration_error.h"

namespace kxjob {
namespace {

/// The value of an environment variable; empty when it is not set.
std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
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
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

}  // namespace

std::vector<std::string> ConfigurationPlaces() {
    const std::string named = Variable("KXJOB_CONFIG");
    if (!named.empty()) return {named};
    std::vector<std::string> places{"./kxjob.conf"};
    const std::string configurationHome = Variable("XDG_CONFIG_HOME");
    const std::string home = Variable("HOME");
    if (!configurationHome.empty()) {
        places.push_back(configurationHome + "/kxjob/kxjob.conf");
    } else if (!home.empty()) {
        places.push_back(home + "/.config/kxjob/kxjob.conf");
    }
    places.emplace_back("/etc/kxjob.conf");
    return places;
}

std::optional<std::string> FirstTextAmong(const std::vector<std::string>& places) {
    for (const std::string& place : places) {
        if (IsThere(place)) return ReadWhole(place);
    }
    return std::nullopt;
}

std::optional<std::string> ConfigurationText() {
    std::optional<std::string> text = FirstTextAmong(ConfigurationPlaces());
    const std::string named = Variable("KXJOB_CONFIG");
    if (!text && !named.empty()) {
        RaiseConfigurationError("KXJOB_CONFIG names the configuration file " + named +
                                ", which cannot be read");
    }
    return text;
}

}  // namespace kxjob

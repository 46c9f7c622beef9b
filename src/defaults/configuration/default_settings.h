#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "defaults/configuration/configuration_document.h"

namespace kxjob {

/// What the shipped collaborators take from the configuration, with their defaults where it says nothing.
class DefaultSettings {
public:
    explicit DefaultSettings(ConfigurationDocument document) : document_(std::move(document)) {}

    /// `log.level`: the highest level that is written, 2 by default. Raises 0x80040000 + 704 when it is no
    /// whole number from 0 on.
    std::int32_t LogLevel() const;
    /// `log.file`: empty, the default, for standard error.
    std::string LogFile() const;
    /// `component.version`: what stands for "%v" in ProgIDs, "83" by default.
    std::string ComponentVersion() const;
    /// `component.<ProgID>.library`
    std::optional<std::string> ComponentLibrary(const std::string& progId) const;
    /// `component.<ProgID>.command`
    std::optional<std::string> ComponentCommand(const std::string& progId) const;

private:
    ConfigurationDocument document_;
};

}  // namespace kxjob

#include "defaults/configuration/default_settings.h"

#include "collaborators/trace_log.h"
#include "defaults/configuration/configuration_error.h"
#include "defaults/configuration/whole_number.h"

namespace kxjob {

std::int32_t DefaultSettings::LogLevel() const {
    const std::optional<std::string> text = document_.Find("log.level");
    if (!text) return kWarning;
    const std::optional<std::int32_t> level = WholeNumber(*text);
    if (!level || *level < 0)
        RaiseConfigurationError("log.level of the configuration is no whole number from 0 on");
    return *level;
}

std::string DefaultSettings::LogFile() const {
    return document_.Find("log.file").value_or("");
}

std::string DefaultSettings::ComponentVersion() const {
    return document_.Find("component.version").value_or("83");
}

std::optional<std::string> DefaultSettings::ComponentLibrary(const std::string& progId) const {
    return document_.Find("component." + progId + ".library");
}

std::optional<std::string> DefaultSettings::ComponentCommand(const std::string& progId) const {
    return document_.Find("component." + progId + ".command");
}

}  // namespace kxjob

#include "kxjob/configuration_check.h"

#include <algorithm>
#include <optional>

#include "defaults/configuration/configuration_document.h"
#include "defaults/configuration/configuration_file.h"
#include "defaults/configuration/known_keys.h"

namespace kxjob {

ConfigurationCheck CheckConfiguration() {
    const std::optional<std::string> text = ConfigurationText();
    if (!text) return {};
    ConfigurationCheck check{.file = FirstFileAmong(ConfigurationPlaces()).value_or(""),
                             .unknownKeys = ConfigurationDocument(*text).Keys()};
    std::erase_if(check.unknownKeys, IsKnownKey);
    return check;
}

}  // namespace kxjob

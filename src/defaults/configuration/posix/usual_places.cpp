#include "defaults/configuration/usual_places.h"

#include "defaults/configuration/environment_variable.h"

namespace kxjob {

std::vector<std::string> UsualPlaces() {
    std::vector<std::string> places{"./kxjob.conf"};
    const std::string configurationHome = VariableValue("XDG_CONFIG_HOME");
    const std::string home = VariableValue("HOME");
    if (!configurationHome.empty()) {
        places.push_back(configurationHome + "/kxjob/kxjob.conf");
    } else if (!home.empty()) {
        places.push_back(home + "/.config/kxjob/kxjob.conf");
    }
    places.emplace_back("/etc/kxjob.conf");
    return places;
}

}  // namespace kxjob

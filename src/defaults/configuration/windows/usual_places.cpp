#include "defaults/configuration/usual_places.h"

#include "defaults/configuration/environment_variable.h"

namespace kxjob {

std::vector<std::string> UsualPlaces() {
    const std::string programData = VariableValue("ProgramData");
    if (programData.empty()) return {};
    return {programData + "\\kxJob\\kxjob.conf"};
}

}  // namespace kxjob

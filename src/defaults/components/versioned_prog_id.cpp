#include "defaults/components/versioned_prog_id.h"

#include <cstddef>

namespace kxjob {

std::string VersionedProgId(const std::string& progIdTemplate, std::string_view versionTag) {
    constexpr std::string_view kPlaceholder = "%v";
    std::string progId = progIdTemplate;
    std::size_t place = progId.find(kPlaceholder);
    while (place != std::string::npos) {
        progId.replace(place, kPlaceholder.size(), versionTag);
        place = progId.find(kPlaceholder, place + versionTag.size());
    }
    return progId;
}

}  // namespace kxjob

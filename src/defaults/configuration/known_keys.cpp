#include "defaults/configuration/known_keys.h"

#include <algorithm>
#include <array>

namespace kxjob {
namespace {

constexpr std::array<std::string_view, 6> kKeys{"adoconnectionstring", "provider", "namespacequalifier",
                                                "log.level",           "log.file", "component.version"};
constexpr std::string_view kComponent = "component.";
constexpr std::array<std::string_view, 2> kOfComponents{".library", ".command"};

}  // namespace

bool IsKnownKey(std::string_view foldedKey) {
    if (std::ranges::find(kKeys, foldedKey) != kKeys.end()) return true;
    return foldedKey.starts_with(kComponent) && std::ranges::any_of(kOfComponents, [&](auto ending) {
               return foldedKey.ends_with(ending) && foldedKey.size() > kComponent.size() + ending.size();
           });
}

}  // namespace kxjob

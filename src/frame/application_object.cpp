#include "frame/application_object.h"

#include <array>
#include <cstdint>

#include "frame/frame.h"

namespace kxjob {
namespace {

constexpr std::int32_t kMajor = 8;
constexpr std::int32_t kMinor = 3;
constexpr std::int32_t kRevision = 1202;

}  // namespace

std::string ApplicationObject::Name() const {
    return "Application";
}

std::span<const std::string_view> ApplicationObject::MemberNames() const {
    static constexpr std::array<std::string_view, 4> kNames = {"Title", "Major", "Minor", "Revision"};
    return kNames;
}

Value ApplicationObject::Get(std::string_view property) {
    if (property == "Title") return kProject;
    if (property == "Major") return kMajor;
    if (property == "Minor") return kMinor;
    if (property == "Revision") return kRevision;
    return Component::Get(property);
}

}  // namespace kxjob

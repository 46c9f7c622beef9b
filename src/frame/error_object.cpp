#include "frame/error_object.h"

#include <array>
#include <utility>

namespace kxjob {

ErrorObject::ErrorObject(AutomationError error) : error_(std::move(error)) {}

std::string ErrorObject::Name() const {
    return "Err";
}

std::span<const std::string_view> ErrorObject::MemberNames() const {
    static constexpr std::array<std::string_view, 3> kNames = {"Number", "Source", "Description"};
    return kNames;
}

Value ErrorObject::Get(std::string_view property) {
    if (property == "Number") return error_.Number();
    if (property == "Source") return error_.Source();
    if (property == "Description") return error_.Description();
    return Component::Get(property);
}

}  // namespace kxjob

#include "frame/error_object.h"

#include <utility>

namespace kxjob {

ErrorObject::ErrorObject(AutomationError error) : error_(std::move(error)) {}

std::string ErrorObject::Name() const {
    return "Err";
}

Value ErrorObject::Get(std::string_view property) {
    if (property == "Number") return error_.Number();
    if (property == "Source") return error_.Source();
    if (property == "Description") return error_.Description();
    return Component::Get(property);
}

}  // namespace kxjob

#pragma once

#include <optional>
#include <string>

#include "value_json.h"

namespace kxjob::command {

inline Json OrNull(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

}  // namespace kxjob::command

#pragma once

#include <optional>

#include "value_json.h"

namespace kxjob::command {

template <typename T>
Json OrNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json(nullptr);
}

}  // namespace kxjob::command

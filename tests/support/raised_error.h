#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "kxjob/automation_error.h"

namespace kxjob::testing_support {

/// Runs `action`, which must raise, and gives its error back. Fails the test when nothing is raised.
inline AutomationError ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const AutomationError& error) {
        return error;
    }
    ADD_FAILURE() << "nothing was raised";
    return {0, "", "nothing was raised"};
}

inline std::int32_t NumberOf(const std::function<void()>& action) {
    return ErrorOf(action).Number();
}

}  // namespace kxjob::testing_support

#pragma once

#include <string>

namespace kxjob {

/// Refuses unsafe text before it becomes part of a statement.
class InputGuard {
public:
    virtual ~InputGuard() = default;
    /// Returns when `value` may be used as the parameter that callers know as `parameterName`, else raises.
    virtual void CheckParameter(const std::string& value, const std::string& parameterName) = 0;
};

}  // namespace kxjob

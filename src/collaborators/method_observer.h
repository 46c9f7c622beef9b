#pragma once

#include <cstdint>
#include <string_view>

#include "collaborators/argument.h"
#include "kxjob/automation_error.h"

namespace kxjob {

/// Watches the methods of one thread. There is none unless a host installs one.
class MethodObserver {
public:
    virtual ~MethodObserver() = default;
    /// A method begins; `arguments` are as given.
    virtual void Enter(std::string_view className, std::string_view method, Arguments arguments) = 0;
    /// The running method has reached the statement at `line`.
    virtual void At(std::int32_t line) = 0;
    /// The method ends without an error. `result` is null for a method without result.
    virtual void Leave(std::string_view method, const Value* result, Arguments arguments) = 0;
    /// The method ends with this error.
    virtual void Raise(std::string_view method, const AutomationError& error) = 0;
};

}  // namespace kxjob

#pragma once

#include <string>

#include "kxjob/component.h"

namespace kxjob {

/// Creates the application's components. A method makes a new one when it needs components.
class ObjectFactory {
public:
    virtual ~ObjectFactory() = default;
    /// A new object of the component whose ProgID is `progIdTemplate` with "%v" replaced by the installed
    /// version tag. Raises when it cannot be created; never gives null.
    virtual ComponentRef CreateVersioned(const std::string& progIdTemplate) = 0;
    /// Whether the component with this complete ProgID can be created on this machine.
    virtual bool CanCreate(const std::string& progId) = 0;
};

}  // namespace kxjob

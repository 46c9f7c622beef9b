#pragma once

#include <functional>
#include <string>

#include "kxjob/component.h"
#include "kxjob/export.h"

namespace kxjob {

/// Makes the component with this ProgID ("Project_83.Class") known to every thread of the process; letter
/// case does not count. A later registration of the same ProgID replaces the earlier one, and each hides a
/// component of that name that ships with the library. `create` gives a new object on each call and may be
/// called on any thread.
KXJOB_EXPORT void RegisterComponent(const std::string& progId, std::function<ComponentRef()> create);

/// Forgets a registered component; one that is not registered is no error.
KXJOB_EXPORT void UnregisterComponent(const std::string& progId);

// A component may also live in a shared library that the configuration names: component.<ProgID>.library =
// FILE. The library is loaded when the component is first asked for and exports one function:
//
//     extern "C" kxjob::Component* kxjob_create_component(const char* progId);
//
// It gives a new object of the class with this ProgID, which the caller deletes, or null when it has no such
// class. It may be called on any thread, may raise AutomationError, and must be built against the same kxjob
// and C++ runtime.

/// A new object of the component with this complete ProgID, wherever it comes from.
/// Raises 0x800401F3 when it is not registered.
KXJOB_EXPORT ComponentRef CreateComponent(const std::string& progId);

}  // namespace kxjob

#pragma once

#include <string>

#include "kxjob/component.h"

namespace kxjob {

/// A new component from a shared library that exports `kxjob_create_component`. The library stays loaded for
/// the rest of the process. Raises "class not registered" when it cannot be loaded or exports no such
/// function; null when the function gives none.
ComponentRef CreateFromLibrary(const std::string& progId, const std::string& path);

}  // namespace kxjob

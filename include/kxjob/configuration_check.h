#pragma once

#include <string>
#include <vector>

#include "kxjob/export.h"

namespace kxjob {

/// What a look at the configuration file finds.
struct ConfigurationCheck {
    /// The file that is used, in UTF-8; empty when there is none.
    std::string file;
    /// Its keys that nobody reads, in lower case and in alphabetical order.
    std::vector<std::string> unknownKeys;
};

/// Looks at the file where ConfiguredConnection looks for it. Raises 0x80040000 + 704 when it cannot be read
/// or understood.
KXJOB_EXPORT ConfigurationCheck CheckConfiguration();

}  // namespace kxjob

#pragma once

#include <string>

#include "kxjob/data_store_provider.h"
#include "kxjob/value.h"

namespace kxjob {

/// Reads the flags that the application's parts leave for one another in a container. A new one is made per
/// reading.
class SystemFlagReader {
public:
    virtual ~SystemFlagReader() = default;
    /// Null or the empty text when the flag is clear, else its text.
    virtual Value ReadFlag(const std::string& connectionString, DataStoreProvider provider,
                           const std::string& nameQualifier, const std::string& flagName) = 0;
};

}  // namespace kxjob

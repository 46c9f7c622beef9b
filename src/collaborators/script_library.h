#pragma once

#include <string>

#include "kxjob/collection.h"
#include "kxjob/data_store_provider.h"

namespace kxjob {

/// SQL scripts by name, one text a provider.
class ScriptLibrary {
public:
    virtual ~ScriptLibrary() = default;
    /// The script with `nameQualifier` in front of its tables. `providerOptions` may be read; `complete` is
    /// always True and asks for the indexes too. Raises for a provider or a name that has no script.
    virtual std::string GetScript(Collection& providerOptions, DataStoreProvider provider,
                                  const std::string& nameQualifier, const std::string& scriptName,
                                  bool complete) = 0;
};

}  // namespace kxjob

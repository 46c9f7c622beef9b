#pragma once

#include <string>

#include "defaults/store/script_library.h"
#include "kxjob/collection.h"

namespace kxjob::testing_support {

/// A script of the library, as JobTableCreationScript asks for it.
inline std::string Script(DataStoreProvider provider, const std::string& nameQualifier,
                          const std::string& scriptName, bool complete = true) {
    Collection options;
    return StoreScriptLibrary().GetScript(options, provider, nameQualifier, scriptName, complete);
}

}  // namespace kxjob::testing_support

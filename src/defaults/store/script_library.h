#pragma once

#include <string>

#include "collaborators/script_library.h"

namespace kxjob {

/// The creation scripts "JobTablesDDL" (the four job tables) and "StandInTablesDDL" (what the stand-in
/// components keep), for the providers that have them: statements end in ";" and a line break, and a script
/// may run twice. Provider options are not read. Raises 0x80040000 + 705 for any other provider or name.
class StoreScriptLibrary : public ScriptLibrary {
public:
    std::string GetScript(Collection& providerOptions, DataStoreProvider provider,
                          const std::string& nameQualifier, const std::string& scriptName,
                          bool complete) override;
};

}  // namespace kxjob

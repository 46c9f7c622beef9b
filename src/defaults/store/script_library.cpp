#include "defaults/store/script_library.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "defaults/store/name_qualifier.h"
#include "defaults/store/sqlite_scripts.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

[[noreturn]] void RaiseUnknown(const std::string& what) {
    throw AutomationError(error_number::kUnknownScript, "kxJob.ScriptLibrary", what);
}

std::span<const ScriptText> ScriptsOf(DataStoreProvider provider) {
    const std::string code = "The data store provider " + std::to_string(provider);
    switch (provider) {
        case dspSqlite: return SqliteScripts();
        case dspOracle: RaiseUnknown(code + " is reserved and not supported");
        case dspSqlServer:
        case dspPostgreSql:
        case dspMariaDb: RaiseUnknown(code + " has no scripts in this build");
        default: RaiseUnknown(code + " is unknown");
    }
}

/// One pass, so that a qualifier is never searched for placeholders itself.
std::string WithQualifier(std::string_view text, const std::string& nameQualifier) {
    const std::string_view prefix = PrefixWithinSchema(nameQualifier);
    std::string script;
    while (true) {
        const std::size_t place = text.find('%');
        script += text.substr(0, place);
        if (place == std::string_view::npos) return script;
        script += text[place + 1] == 'q' ? std::string_view(nameQualifier) : prefix;
        text.remove_prefix(place + std::string_view("%q%").size());
    }
}

}  // namespace

std::string StoreScriptLibrary::GetScript(Collection& /*providerOptions*/, DataStoreProvider provider,
                                          const std::string& nameQualifier, const std::string& scriptName,
                                          bool complete) {
    const std::span<const ScriptText> scripts = ScriptsOf(provider);
    const auto script = std::find_if(scripts.begin(), scripts.end(), [&](const ScriptText& candidate) {
        return candidate.name == scriptName;
    });
    if (script == scripts.end()) RaiseUnknown("There is no script named \"" + scriptName + "\"");
    std::string text = WithQualifier(script->tables, nameQualifier);
    if (complete) text += WithQualifier(script->indexes, nameQualifier);
    return text;
}

}  // namespace kxjob

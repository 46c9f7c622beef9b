#include "defaults/store/script_library.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

#include "defaults/store/name_qualifier.h"
#include "defaults/store/script_dialect.h"
#include "defaults/store/script_tables.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using std::string_view;

[[noreturn]] void RaiseUnknown(const std::string& what) {
    throw AutomationError(error_number::kUnknownScript, "kxJob.ScriptLibrary", what);
}

const ScriptDialect& DialectOf(DataStoreProvider provider) {
    const ScriptDialect* dialect = ScriptDialectOf(provider);
    if (dialect != nullptr) return *dialect;
    const std::string code = "The data store provider " + std::to_string(provider);
    RaiseUnknown(code + (provider == dspOracle ? " is reserved and not supported" : " is unknown"));
}

const ScriptTables& TablesOf(const std::string& scriptName) {
    const std::span<const ScriptTables> scripts = AllScriptTables();
    const auto script = std::find_if(scripts.begin(), scripts.end(), [&](const ScriptTables& candidate) {
        return candidate.scriptName == scriptName;
    });
    if (script == scripts.end()) RaiseUnknown("There is no script named \"" + scriptName + "\"");
    return *script;
}

/// A script while it is written: fills in the placeholders of the texts it is made of.
class ScriptWriter {
public:
    ScriptWriter(const ScriptDialect& dialect, string_view nameQualifier)
        : dialect_(dialect), values_{{'q', nameQualifier},        {'p', PrefixWithinSchema(nameQualifier)},
                                     {'K', dialect.guid},         {'N', dialect.name},
                                     {'S', dialect.shortText},    {'T', dialect.longText},
                                     {'D', dialect.moment},       {'I', dialect.whole},
                                     {'F', dialect.number},       {'x', dialect.itemKeyInColumn},
                                     {'y', dialect.itemKeyBehind}} {
        Write(dialect.begin);
    }

    void WriteTable(const ScriptTable& table, bool withIndexes) {
        values_['n'] = table.name;
        values_['g'] = table.rowsGrow ? dialect_.growingRows : "";
        Write(dialect_.tableBegin);
        Write(table.columns);
        if (withIndexes) {
            for (const ScriptIndex& index : table.indexes) {
                WriteIndex(index, index.holdsTheRows ? dialect_.rowIndexInTable : dialect_.indexInTable);
            }
        }
        Write(dialect_.tableEnd);
    }

    void WriteIndexesBehind(const ScriptTable& table) {
        values_['n'] = table.name;
        for (const ScriptIndex& index : table.indexes) WriteIndex(index, dialect_.indexBehind);
    }

    std::string Text() && { return std::move(script_); }

private:
    void WriteIndex(const ScriptIndex& index, string_view text) {
        values_['i'] = index.name;
        values_['c'] = index.columns;
        Write(text);
    }

    /// One pass, so that a qualifier is never searched for placeholders itself.
    void Write(string_view text) {
        while (true) {
            const std::size_t place = text.find('%');
            script_ += text.substr(0, place);
            if (place == string_view::npos) return;
            script_ += values_.at(text[place + 1]);
            text.remove_prefix(place + string_view("%q%").size());
        }
    }

    const ScriptDialect& dialect_;
    std::map<char, string_view> values_;
    std::string script_;
};

}  // namespace

std::string StoreScriptLibrary::GetScript(Collection& /*providerOptions*/, DataStoreProvider provider,
                                          const std::string& nameQualifier, const std::string& scriptName,
                                          bool complete) {
    const ScriptDialect& dialect = DialectOf(provider);
    const ScriptTables& script = TablesOf(scriptName);
    ScriptWriter writer(dialect, nameQualifier);
    for (const ScriptTable& table : script.tables) writer.WriteTable(table, complete);
    if (complete) {
        for (const ScriptTable& table : script.tables) writer.WriteIndexesBehind(table);
    }
    return std::move(writer).Text();
}

}  // namespace kxjob

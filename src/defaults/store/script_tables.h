#pragma once

#include <span>
#include <string_view>

namespace kxjob {

struct ScriptIndex {
    std::string_view name;
    std::string_view columns;
    bool holdsTheRows = false;  // where an engine can, rows lie in this index's order
};

/// One table of a creation script. Its columns are told with placeholders (see ScriptDialect) for what
/// engines call differently.
struct ScriptTable {
    std::string_view name;
    std::string_view columns;
    std::span<const ScriptIndex> indexes = {};
    bool rowsGrow = false;  // each is changed, and longer afterwards, soon after it was written
};

struct ScriptTables {
    std::string_view scriptName;
    std::span<const ScriptTable> tables;
};

/// All creation scripts.
std::span<const ScriptTables> AllScriptTables();

}  // namespace kxjob

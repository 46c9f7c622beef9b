#pragma once

#include <string_view>

#include "kxjob/data_store_provider.h"

namespace kxjob {

/// How an engine says what a creation script says. The texts hold placeholders: %q% is the name qualifier,
/// %p% its part within the schema, %n% the table, %c% columns, %i% an index, and these are filled in where
/// columns are told:
///   %K% GUIDs and state names  %N% names that callers choose  %S% short texts, %T% texts of any length
///   %D% moments                %I% whole numbers              %F% other numbers
///   %x% %y%  what makes the job item's GUID a key, in its column and behind all columns
///   %g%  in `tableEnd`, that rows grow
struct ScriptDialect {
    DataStoreProvider provider;
    std::string_view begin;  // stands in front of the script
    std::string_view guid, name, shortText, longText, moment, whole, number;
    std::string_view itemKeyInColumn, itemKeyBehind;
    std::string_view tableBegin, tableEnd;
    std::string_view growingRows;                    // told behind a table whose rows do
    std::string_view indexInTable, rowIndexInTable;  // behind a table's columns
    std::string_view indexBehind;                    // a statement of its own
};

/// Null for a provider without scripts.
const ScriptDialect* ScriptDialectOf(DataStoreProvider provider);

}  // namespace kxjob

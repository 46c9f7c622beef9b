#include "defaults/store/script_dialect.h"

#include <algorithm>
#include <array>

namespace kxjob {
namespace {

constexpr std::string_view kTableBegin = "CREATE TABLE IF NOT EXISTS %q%%n% (";

/// An index carries the schema, and then its table must not.
constexpr ScriptDialect kSqlite = {
    .provider = dspSqlite,
    .begin = "",
    .guid = "text",
    .name = "text",
    .shortText = "text",
    .longText = "text",
    .moment = "text",
    .whole = "integer",
    .number = "real",
    .itemKeyInColumn = " PRIMARY KEY",
    .itemKeyBehind = "",
    .tableBegin = kTableBegin,
    .tableEnd = ");\n",
    .growingRows = "",
    .indexInTable = "",
    .rowIndexInTable = "",
    .indexBehind = "CREATE INDEX IF NOT EXISTS %q%%i% ON %p%%n% (%c%);\n",
};

/// An index must not carry the schema. Several processes that create the same table at once fail in the
/// catalogue, IF NOT EXISTS or not: they queue for a lock, which lasts for as long as the transaction that
/// the script is sent in. An item is changed twice, by its claim and by its end, and both versions fit on its
/// page where two thirds were left empty: then no index is written again, and work costs the server half.
constexpr ScriptDialect kPostgreSql = {
    .provider = dspPostgreSql,
    .begin = "SELECT pg_advisory_xact_lock(83001);\n",
    .guid = "varchar(64) COLLATE \"C\"",
    .name = "varchar(255) COLLATE \"C\"",
    .shortText = "text",
    .longText = "text",
    .moment = "varchar(32)",
    .whole = "integer",
    .number = "double precision",
    .itemKeyInColumn = " PRIMARY KEY",
    .itemKeyBehind = "",
    .tableBegin = kTableBegin,
    .tableEnd = ")%g%;\n",
    .growingRows = " WITH (fillfactor = 30)",
    .indexInTable = "",
    .rowIndexInTable = "",
    .indexBehind = "CREATE INDEX IF NOT EXISTS %p%%i% ON %q%%n% (%c%);\n",
};

/// Rows lie in the order of the primary key. With the item's GUID as that key, reading one job's items took a
/// hundred times as long, and sweeps and updates deadlocked each other. The collation compares letter by
/// letter, trailing blanks included.
constexpr ScriptDialect kMariaDb = {
    .provider = dspMariaDb,
    .begin = "",
    .guid = "varchar(64)",
    .name = "varchar(255)",
    .shortText = "varchar(255)",
    .longText = "longtext",
    .moment = "varchar(32)",
    .whole = "integer",
    .number = "double",
    .itemKeyInColumn = "",
    .itemKeyBehind =
        ",\n    PRIMARY KEY (jobguid, sequence, jobitemguid), UNIQUE KEY jobitem_key (jobitemguid)",
    .tableBegin = kTableBegin,
    .tableEnd = ") ENGINE=InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_nopad_bin;\n",
    .growingRows = "",
    .indexInTable = ",\n    KEY %i% (%c%)",
    .rowIndexInTable = "",
    .indexBehind = "",
};

constexpr ScriptDialect kSqlServer = {
    .provider = dspSqlServer,
    .begin = "",
    .guid = "varchar(64) COLLATE Latin1_General_BIN2",
    .name = "nvarchar(255) COLLATE Latin1_General_BIN2",
    .shortText = "nvarchar(255)",
    .longText = "nvarchar(max)",
    .moment = "varchar(32)",
    .whole = "int",
    .number = "float",
    .itemKeyInColumn = " PRIMARY KEY NONCLUSTERED",
    .itemKeyBehind = "",
    .tableBegin = "IF OBJECT_ID(N'%q%%n%', N'U') IS NULL CREATE TABLE %q%%n% (",
    .tableEnd = ");\n",
    .growingRows = "",
    .indexInTable = ",\n    INDEX %i% NONCLUSTERED (%c%)",
    .rowIndexInTable = ",\n    INDEX %i% CLUSTERED (%c%)",
    .indexBehind = "",
};

constexpr std::array kDialects = {kSqlite, kPostgreSql, kMariaDb, kSqlServer};

}  // namespace

const ScriptDialect* ScriptDialectOf(DataStoreProvider provider) {
    const auto* dialect =
        std::find_if(kDialects.begin(), kDialects.end(),
                     [&](const ScriptDialect& candidate) { return candidate.provider == provider; });
    return dialect == kDialects.end() ? nullptr : dialect;
}

}  // namespace kxjob

#include "defaults/store/store_flag_reader.h"

#include "defaults/store/optional_table.h"
#include "defaults/text/standard_sql_formatter.h"
#include "kxjob/array.h"

namespace kxjob {

Value StoreFlagReader::ReadFlag(const std::string& connectionString, DataStoreProvider /*provider*/,
                                const std::string& nameQualifier, const std::string& flagName) {
    std::string sql = "SELECT flagvalue FROM " + nameQualifier + "systemflag";
    sql += " WHERE flagname = " + StandardSqlFormatter().FormatValue(flagName);
    const Value rows = QueryOptionalTable(*sessions_, connectionString, sql);
    return rows.IsEmpty() ? Value(Null{}) : rows.Rows().Cell(0, 0);
}

}  // namespace kxjob

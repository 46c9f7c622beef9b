#pragma once

#include <cstdint>
#include <string>

#include "kxjob/data_store_provider.h"
#include "kxjob/value.h"

namespace kxjob {

/// Three texts that WriteLongText may fill; callers hand them over empty and ignore them afterwards.
struct LongTextOutputs {
    std::string first;
    std::string second;
    std::string third;
};

/// Runs statements on the store that a connection string names, one at a time, exactly as handed over:
/// no retry, no transaction. One object per thread. Failures are AutomationErrors, without passwords.
class DataAccess {
public:
    virtual ~DataAccess() = default;
    /// Runs a statement that changes data; how many rows changed is not reported. `mode` is always 1.
    virtual void Execute(const std::string& connectionString, DataStoreProvider provider, std::int32_t mode,
                         const std::string& sql) = 0;

    /// Runs a SELECT: (column, row) from 0, in SELECT order. No row: Empty if `allowEmpty`, else raises.
    virtual Value Query(const std::string& connectionString, DataStoreProvider provider, std::int32_t mode,
                        const std::string& sql, bool allowEmpty) = 0;

    /// Writes one text of any length into `valueColumn` of the row whose `keyColumn` holds `keyValue`, which
    /// is plain text and no literal. The table is `nameQualifier` followed by `baseTableName`.
    virtual void WriteLongText(const std::string& connectionString, DataStoreProvider provider,
                               std::int32_t mode, const std::string& nameQualifier,
                               const std::string& baseTableName, const std::string& keyColumn,
                               const std::string& keyValue, const std::string& valueColumn,
                               const std::string& value, LongTextOutputs& outputs) = 0;
};

}  // namespace kxjob

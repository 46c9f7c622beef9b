#include "defaults/store/store_data_access.h"

#include "defaults/store/data_access_error.h"
#include "defaults/text/storable_text.h"

namespace kxjob {

void StoreDataAccess::Execute(const std::string& connectionString, DataStoreProvider /*provider*/,
                              std::int32_t /*mode*/, const std::string& sql) {
    sessions_->Use(connectionString, [&](Session& session) { session.Execute(sql); });
}

Value StoreDataAccess::Query(const std::string& connectionString, DataStoreProvider /*provider*/,
                             std::int32_t /*mode*/, const std::string& sql, bool allowEmpty) {
    Value rows = sessions_->Use(connectionString, [&](Session& session) { return session.Query(sql); });
    if (rows.IsEmpty() && !allowEmpty) RaiseNoRow();
    return rows;
}

void StoreDataAccess::WriteLongText(const std::string& connectionString, DataStoreProvider /*provider*/,
                                    std::int32_t /*mode*/, const std::string& nameQualifier,
                                    const std::string& baseTableName, const std::string& keyColumn,
                                    const std::string& keyValue, const std::string& valueColumn,
                                    const std::string& value, LongTextOutputs& /*outputs*/) {
    RequireStorable(keyValue);
    RequireStorable(value);
    sessions_->Use(connectionString, [&](Session& session) {
        session.WriteLongText(nameQualifier + baseTableName, keyColumn, keyValue, valueColumn, value);
    });
}

}  // namespace kxjob

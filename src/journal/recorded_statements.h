#pragma once

#include "collaborators/batch_sql_executor.h"
#include "collaborators/data_access.h"
#include "collaborators/input_guard.h"
#include "collaborators/script_library.h"
#include "collaborators/sql_formatter.h"
#include "collaborators/system_flag_reader.h"
#include "journal/connection_secrets.h"
#include "journal/recorded.h"

namespace kxjob {

// The collaborators that statements are made and run with.

class RecordedInputGuard : public Recorded<InputGuard> {
public:
    using Recorded::Recorded;

    void CheckParameter(const std::string& value, const std::string& parameterName) override {
        Forward("InputGuard", "CheckParameter", &InputGuard::CheckParameter, value, parameterName);
    }
};

class RecordedSqlFormatter : public Recorded<SqlFormatter> {
public:
    using Recorded::Recorded;

    std::string FormatValue(const Value& value) override {
        return Forward("SqlFormatter", "FormatValue", &SqlFormatter::FormatValue, value);
    }
    std::string FormatGuid(const std::string& guid) override {
        return Forward("SqlFormatter", "FormatGuid", &SqlFormatter::FormatGuid, guid);
    }
};

class RecordedDataAccess : public Recorded<DataAccess> {
public:
    using Recorded::Recorded;

    void Execute(const std::string& connectionString, DataStoreProvider provider, std::int32_t mode,
                 const std::string& sql) override {
        Record("DataAccess", "Execute", {WithoutSecrets(connectionString), provider, mode, sql},
               [&](DataAccess& inner) { inner.Execute(connectionString, provider, mode, sql); });
    }
    Value Query(const std::string& connectionString, DataStoreProvider provider, std::int32_t mode,
                const std::string& sql, bool allowEmpty) override {
        return Record("DataAccess", "Query",
                      {WithoutSecrets(connectionString), provider, mode, sql, allowEmpty},
                      [&](DataAccess& inner) {
                          return inner.Query(connectionString, provider, mode, sql, allowEmpty);
                      });
    }
    void WriteLongText(const std::string& connectionString, DataStoreProvider provider, std::int32_t mode,
                       const std::string& nameQualifier, const std::string& baseTableName,
                       const std::string& keyColumn, const std::string& keyValue,
                       const std::string& valueColumn, const std::string& value,
                       LongTextOutputs& outputs) override {
        Record("DataAccess", "WriteLongText",
               {WithoutSecrets(connectionString), provider, mode, nameQualifier, baseTableName, keyColumn,
                keyValue, valueColumn, value},
               [&](DataAccess& inner) {
                   inner.WriteLongText(connectionString, provider, mode, nameQualifier, baseTableName,
                                       keyColumn, keyValue, valueColumn, value, outputs);
               });
    }
};

class RecordedBatchSqlExecutor : public Recorded<BatchSqlExecutor> {
public:
    using Recorded::Recorded;

    void Open(const std::string& connectionString, DataStoreProvider provider,
              std::int32_t batchSize) override {
        Record("BatchSqlExecutor", "Open", {WithoutSecrets(connectionString), provider, batchSize},
               [&](BatchSqlExecutor& inner) { inner.Open(connectionString, provider, batchSize); });
    }
    void Add(const std::string& sql) override {
        Forward("BatchSqlExecutor", "Add", &BatchSqlExecutor::Add, sql);
    }
    void Flush() override { Forward("BatchSqlExecutor", "Flush", &BatchSqlExecutor::Flush); }
};

class RecordedSystemFlagReader : public Recorded<SystemFlagReader> {
public:
    using Recorded::Recorded;

    Value ReadFlag(const std::string& connectionString, DataStoreProvider provider,
                   const std::string& nameQualifier, const std::string& flagName) override {
        return Record("SystemFlagReader", "ReadFlag",
                      {WithoutSecrets(connectionString), provider, nameQualifier, flagName},
                      [&](SystemFlagReader& inner) {
                          return inner.ReadFlag(connectionString, provider, nameQualifier, flagName);
                      });
    }
};

class RecordedScriptLibrary : public Recorded<ScriptLibrary> {
public:
    using Recorded::Recorded;

    std::string GetScript(Collection& providerOptions, DataStoreProvider provider,
                          const std::string& nameQualifier, const std::string& scriptName,
                          bool complete) override {
        return Forward("ScriptLibrary", "GetScript", &ScriptLibrary::GetScript, providerOptions, provider,
                       nameQualifier, scriptName, complete);
    }
};

}  // namespace kxjob

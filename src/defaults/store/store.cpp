#include "kxjob/store.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "collaborators/this_thread.h"
#include "defaults/store/create_database_file.h"
#include "defaults/store/script_statements.h"
#include "kxjob/collection.h"
#include "kxjob/job_helper.h"

namespace kxjob {
namespace {

constexpr std::int32_t kMode = 1;

}  // namespace

Store::Store(std::string connectionString, DataStoreProvider provider, std::string nameQualifier)
    : connectionString_(std::move(connectionString)),
      provider_(provider),
      nameQualifier_(std::move(nameQualifier)) {}

void Store::CreateDatabase() {
    CreateDatabaseFile(connectionString_);
}

void Store::CreateTables() {
    ThisThread().Guard().CheckParameter(nameQualifier_, "NameQualifier");
    Collection options;
    RunScript(JobHelper().JobTableCreationScript(options, provider_, nameQualifier_));
    RunScript(ThisThread().Scripts().GetScript(options, provider_, nameQualifier_, "StandInTablesDDL", true));
}

void Store::Execute(const std::string& sql) {
    ThisThread().Data().Execute(connectionString_, provider_, kMode, sql);
}

Value Store::Query(const std::string& sql) {
    return ThisThread().Data().Query(connectionString_, provider_, kMode, sql, true);
}

std::string Store::Literal(const Value& value) {
    return ThisThread().Formatter().FormatValue(value);
}

/// As one batch: some engines need to have the whole of it before another process creates the same tables.
void Store::RunScript(const std::string& script) {
    const std::vector<std::string> statements = ScriptStatements(script);
    const std::shared_ptr<BatchSqlExecutor> executor = ThisThread().Factory().MakeBatchSqlExecutor();
    executor->Open(connectionString_, provider_, static_cast<std::int32_t>(statements.size()));
    for (const std::string& statement : statements) executor->Add(statement);
    executor->Flush();
}

}  // namespace kxjob

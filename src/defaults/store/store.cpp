#include "kxjob/store.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "collaborators/this_thread.h"
#include "defaults/store/create_database_file.h"
#include "defaults/store/script_statements.h"
#include "kxjob/collection.h"
#include "kxjob/job_helper.h"

namespace kxjob {
namespace {

constexpr std::int32_t kMode = 1;

/// That of the calling thread.
std::shared_ptr<StoreInformation> Information() {
    std::shared_ptr<StoreInformation> information = ThisThread().Factory().MakeStoreInformation();
    if (information == nullptr) RaiseRuntimeError(error_number::kObjectNotSet);
    return information;
}

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
    RunScript(JobTablesScript());
    RunScript(StandInTablesScript());
}

std::string Store::CreationScript() {
    ThisThread().Guard().CheckParameter(nameQualifier_, "NameQualifier");
    std::string script = JobTablesScript();
    return script.append(StandInTablesScript());
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

std::string Store::EngineName() {
    return Information()->EngineName(connectionString_);
}

std::string Store::EngineVersion() {
    return Information()->EngineVersion(connectionString_);
}

std::string Store::NowISODateTime() {
    return Information()->NowISODateTime(connectionString_);
}

std::string Store::JobTablesScript() {
    Collection options;
    return JobHelper().JobTableCreationScript(options, provider_, nameQualifier_);
}

std::string Store::StandInTablesScript() {
    Collection options;
    return ThisThread().Scripts().GetScript(options, provider_, nameQualifier_, "StandInTablesDDL", true);
}

/// Some engines need to have the whole of it before another process creates the same tables.
void Store::RunScript(const std::string& script) {
    ExecuteTogether(ScriptStatements(script));
}

void Store::ExecuteTogether(std::span<const std::string> statements) {
    if (statements.empty()) return;
    const std::shared_ptr<BatchSqlExecutor> executor = ThisThread().Factory().MakeBatchSqlExecutor();
    executor->Open(connectionString_, provider_, static_cast<std::int32_t>(statements.size()));
    for (const std::string& statement : statements) executor->Add(statement);
    executor->Flush();
}

}  // namespace kxjob

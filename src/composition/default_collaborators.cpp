#include "composition/default_collaborators.h"

#include "defaults/collections/hash_keyed_collection.h"
#include "defaults/collections/range_array_inspector.h"
#include "defaults/configuration/configuration_file.h"
#include "defaults/configuration/document_connection_settings.h"
#include "defaults/store/script_library.h"
#include "defaults/store/session_store_information.h"
#include "defaults/store/store_batch_executor.h"
#include "defaults/store/store_data_access.h"
#include "defaults/store/store_flag_reader.h"
#include "defaults/system/clock_random_source.h"
#include "defaults/system/file_trace_log.h"
#include "defaults/system/process_environment_info.h"
#include "defaults/system/random_guid_service.h"
#include "defaults/system/system_time_service.h"
#include "defaults/text/standard_input_guard.h"
#include "defaults/text/standard_sql_formatter.h"

namespace kxjob {

std::shared_ptr<InputGuard> DefaultCollaborators::MakeInputGuard() {
    return std::make_shared<StandardInputGuard>();
}

std::shared_ptr<SqlFormatter> DefaultCollaborators::MakeSqlFormatter() {
    return std::make_shared<StandardSqlFormatter>();
}

std::shared_ptr<DataAccess> DefaultCollaborators::MakeDataAccess() {
    return std::make_shared<StoreDataAccess>(sessions_);
}

std::shared_ptr<TraceLog> DefaultCollaborators::MakeTraceLog() {
    if (log_ == nullptr) {
        log_ = std::make_shared<FileTraceLog>(Settings().LogFile(), Settings().LogLevel());
    }
    return log_;
}

std::shared_ptr<GuidService> DefaultCollaborators::MakeGuidService() {
    return std::make_shared<RandomGuidService>();
}

std::shared_ptr<TimeService> DefaultCollaborators::MakeTimeService() {
    return std::make_shared<SystemTimeService>();
}

std::shared_ptr<ArrayInspector> DefaultCollaborators::MakeArrayInspector() {
    return std::make_shared<RangeArrayInspector>();
}

std::shared_ptr<ScriptLibrary> DefaultCollaborators::MakeScriptLibrary() {
    return std::make_shared<StoreScriptLibrary>();
}

std::shared_ptr<RandomSource> DefaultCollaborators::MakeRandomSource() {
    return std::make_shared<ClockRandomSource>();
}

std::shared_ptr<ConnectionSettings> DefaultCollaborators::MakeConnectionSettings() {
    return std::make_shared<DocumentConnectionSettings>();
}

std::shared_ptr<SystemFlagReader> DefaultCollaborators::MakeSystemFlagReader() {
    return std::make_shared<StoreFlagReader>(sessions_);
}

std::shared_ptr<BatchSqlExecutor> DefaultCollaborators::MakeBatchSqlExecutor() {
    return std::make_shared<StoreBatchExecutor>(sessions_);
}

std::shared_ptr<EnvironmentInfo> DefaultCollaborators::MakeEnvironmentInfo() {
    return std::make_shared<ProcessEnvironmentInfo>();
}

std::shared_ptr<KeyedCollection> DefaultCollaborators::MakeKeyedCollection() {
    return std::make_shared<HashKeyedCollection>();
}

std::shared_ptr<StoreInformation> DefaultCollaborators::MakeStoreInformation() {
    return std::make_shared<SessionStoreInformation>(sessions_);
}

const DefaultSettings& DefaultCollaborators::Settings() {
    if (!settings_) settings_.emplace(ConfigurationDocument(ConfigurationText().value_or("")));
    return *settings_;
}

}  // namespace kxjob

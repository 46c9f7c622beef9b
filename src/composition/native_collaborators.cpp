#include <memory>
#include <utility>

#include "collaborators/collaborator_factory.h"
#include "defaults/collections/hash_keyed_collection.h"
#include "defaults/collections/range_array_inspector.h"
#include "defaults/components/component_catalog.h"
#include "defaults/components/registry_object_factory.h"
#include "defaults/components/registry_platform.h"
#include "defaults/configuration/configuration_file.h"
#include "defaults/configuration/default_settings.h"
#include "defaults/configuration/document_connection_settings.h"
#include "defaults/store/script_library.h"
#include "defaults/store/session_cache.h"
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
#include "siblings/stand_ins.h"

namespace kxjob {
namespace {

/// The collaborators of one thread. They share its connections; the configuration is read when the first of
/// those that depend on it is made, and no file means the defaults.
class NativeCollaborators : public CollaboratorFactory {
public:
    std::shared_ptr<InputGuard> MakeInputGuard() override { return std::make_shared<StandardInputGuard>(); }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override {
        return std::make_shared<StandardSqlFormatter>();
    }
    std::shared_ptr<DataAccess> MakeDataAccess() override {
        return std::make_shared<StoreDataAccess>(sessions_);
    }
    std::shared_ptr<TraceLog> MakeTraceLog() override { return Parts().log; }
    std::shared_ptr<GuidService> MakeGuidService() override { return std::make_shared<RandomGuidService>(); }
    std::shared_ptr<TimeService> MakeTimeService() override { return std::make_shared<SystemTimeService>(); }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override {
        return std::make_shared<RangeArrayInspector>();
    }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override {
        return std::make_shared<StoreScriptLibrary>();
    }
    std::shared_ptr<RandomSource> MakeRandomSource() override {
        return std::make_shared<ClockRandomSource>();
    }
    std::shared_ptr<Platform> MakePlatform() override {
        return std::make_shared<RegistryPlatform>(Parts().catalog);
    }

    std::shared_ptr<ObjectFactory> MakeObjectFactory() override {
        return std::make_shared<RegistryObjectFactory>(Parts().catalog);
    }
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override {
        return std::make_shared<DocumentConnectionSettings>();
    }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override {
        return std::make_shared<StoreFlagReader>(sessions_);
    }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override {
        return std::make_shared<StoreBatchExecutor>(sessions_);
    }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override {
        return std::make_shared<ProcessEnvironmentInfo>();
    }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override {
        return std::make_shared<HashKeyedCollection>();
    }

private:
    /// What depends on the configuration.
    struct ConfiguredParts {
        std::shared_ptr<TraceLog> log;
        std::shared_ptr<const ComponentCatalog> catalog;
    };

    const ConfiguredParts& Parts() {
        if (parts_.catalog == nullptr) parts_ = ReadParts();
        return parts_;
    }

    ConfiguredParts ReadParts() const {
        const DefaultSettings settings(ConfigurationDocument(ConfigurationText().value_or("")));
        auto log = std::make_shared<FileTraceLog>(settings.LogFile(), settings.LogLevel());
        auto catalog = std::make_shared<ComponentCatalog>(settings);
        AddStandIns(*catalog, sessions_, log);
        return {std::move(log), std::move(catalog)};
    }

    std::shared_ptr<SessionCache> sessions_ = std::make_shared<SessionCache>();
    ConfiguredParts parts_;
};

}  // namespace

std::shared_ptr<CollaboratorFactory> MakePlatformCollaborators() {
    return std::make_shared<NativeCollaborators>();
}

}  // namespace kxjob

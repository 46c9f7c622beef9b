#pragma once

#include <memory>

#include "collaborators/array_inspector.h"
#include "collaborators/batch_sql_executor.h"
#include "collaborators/connection_settings.h"
#include "collaborators/data_access.h"
#include "collaborators/environment_info.h"
#include "collaborators/guid_service.h"
#include "collaborators/input_guard.h"
#include "collaborators/keyed_collection.h"
#include "collaborators/method_observer.h"
#include "collaborators/object_factory.h"
#include "collaborators/platform.h"
#include "collaborators/random_source.h"
#include "collaborators/script_library.h"
#include "collaborators/sql_formatter.h"
#include "collaborators/store_information.h"
#include "collaborators/system_flag_reader.h"
#include "collaborators/time_service.h"
#include "collaborators/trace_log.h"

namespace kxjob {

/// Makes the collaborators of one thread. Never gives null, but for the last two.
class CollaboratorFactory {
public:
    virtual ~CollaboratorFactory() = default;

    // Asked once a thread:
    virtual std::shared_ptr<InputGuard> MakeInputGuard() = 0;
    virtual std::shared_ptr<SqlFormatter> MakeSqlFormatter() = 0;
    virtual std::shared_ptr<DataAccess> MakeDataAccess() = 0;
    virtual std::shared_ptr<TraceLog> MakeTraceLog() = 0;
    virtual std::shared_ptr<GuidService> MakeGuidService() = 0;
    virtual std::shared_ptr<TimeService> MakeTimeService() = 0;
    virtual std::shared_ptr<ArrayInspector> MakeArrayInspector() = 0;
    virtual std::shared_ptr<ScriptLibrary> MakeScriptLibrary() = 0;
    virtual std::shared_ptr<RandomSource> MakeRandomSource() = 0;
    virtual std::shared_ptr<Platform> MakePlatform() = 0;

    // Asked whenever a method needs a new one:
    virtual std::shared_ptr<ObjectFactory> MakeObjectFactory() = 0;
    virtual std::shared_ptr<ConnectionSettings> MakeConnectionSettings() = 0;
    virtual std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() = 0;
    virtual std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() = 0;
    virtual std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() = 0;
    virtual std::shared_ptr<KeyedCollection> MakeKeyedCollection() = 0;

    /// Who watches the thread's methods; null for nobody.
    virtual std::shared_ptr<MethodObserver> MakeMethodObserver() { return nullptr; }
    /// Not for the methods: for those who look after stores. Null where stores tell nothing.
    virtual std::shared_ptr<StoreInformation> MakeStoreInformation() { return nullptr; }
};

/// The factory of this platform's own collaborators, a new one for each thread. The library declares it and
/// the build picks who defines it.
std::shared_ptr<CollaboratorFactory> MakePlatformCollaborators();

}  // namespace kxjob

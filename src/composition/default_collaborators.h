#pragma once

#include <memory>
#include <optional>

#include "collaborators/collaborator_factory.h"
#include "defaults/configuration/default_settings.h"
#include "defaults/store/session_cache.h"

namespace kxjob {

/// The collaborators of one thread that are the same on every platform; where components come from is left to
/// the platform's own class. They share the thread's connections; the configuration is read when the first of
/// those that depend on it is made, and no file means the defaults.
class DefaultCollaborators : public CollaboratorFactory {
public:
    std::shared_ptr<InputGuard> MakeInputGuard() override;
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override;
    std::shared_ptr<DataAccess> MakeDataAccess() override;
    std::shared_ptr<TraceLog> MakeTraceLog() override;
    std::shared_ptr<GuidService> MakeGuidService() override;
    std::shared_ptr<TimeService> MakeTimeService() override;
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override;
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override;
    std::shared_ptr<RandomSource> MakeRandomSource() override;

    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override;
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override;
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override;
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override;
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override;
    std::shared_ptr<StoreInformation> MakeStoreInformation() override;

protected:
    const DefaultSettings& Settings();
    const std::shared_ptr<SessionCache>& Sessions() const { return sessions_; }

private:
    std::shared_ptr<SessionCache> sessions_ = std::make_shared<SessionCache>();
    std::optional<DefaultSettings> settings_;
    std::shared_ptr<TraceLog> log_;
};

}  // namespace kxjob

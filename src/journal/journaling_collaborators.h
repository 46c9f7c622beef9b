#pragma once

#include <memory>

#include "collaborators/collaborator_factory.h"
#include "journal/recorder.h"
#include "kxjob/call_journal.h"

namespace kxjob {

/// Makes what another factory makes, with every call written to a sink. What it has made may outlive it, and
/// then works on without being recorded.
class JournalingCollaborators : public CollaboratorFactory {
public:
    JournalingCollaborators(std::shared_ptr<CollaboratorFactory> inner, JournalSink& sink);
    JournalingCollaborators(const JournalingCollaborators&) = delete;
    JournalingCollaborators& operator=(const JournalingCollaborators&) = delete;
    ~JournalingCollaborators() override;

    std::shared_ptr<InputGuard> MakeInputGuard() override;
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override;
    std::shared_ptr<DataAccess> MakeDataAccess() override;
    std::shared_ptr<TraceLog> MakeTraceLog() override;
    std::shared_ptr<GuidService> MakeGuidService() override;
    std::shared_ptr<TimeService> MakeTimeService() override;
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override;
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override;
    std::shared_ptr<RandomSource> MakeRandomSource() override;
    std::shared_ptr<Platform> MakePlatform() override;
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override;
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override;
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override;
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override;
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override;
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override;
    /// As it is: no method calls it.
    std::shared_ptr<StoreInformation> MakeStoreInformation() override;
    std::shared_ptr<MethodObserver> MakeMethodObserver() override;

private:
    std::shared_ptr<CollaboratorFactory> inner_;
    std::shared_ptr<Recorder> recorder_;
};

}  // namespace kxjob

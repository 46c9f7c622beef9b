#include "journal/journaling_collaborators.h"

#include <utility>

#include "journal/recorded_objects.h"
#include "journal/recorded_services.h"
#include "journal/recorded_statements.h"

namespace kxjob {

JournalingCollaborators::JournalingCollaborators(std::shared_ptr<CollaboratorFactory> inner,
                                                 JournalSink& sink)
    : inner_(std::move(inner)), recorder_(std::make_shared<Recorder>(sink)) {}

JournalingCollaborators::~JournalingCollaborators() {
    recorder_->Detach();
}

std::shared_ptr<InputGuard> JournalingCollaborators::MakeInputGuard() {
    return std::make_shared<RecordedInputGuard>(recorder_, inner_->MakeInputGuard());
}

std::shared_ptr<SqlFormatter> JournalingCollaborators::MakeSqlFormatter() {
    return std::make_shared<RecordedSqlFormatter>(recorder_, inner_->MakeSqlFormatter());
}

std::shared_ptr<DataAccess> JournalingCollaborators::MakeDataAccess() {
    return std::make_shared<RecordedDataAccess>(recorder_, inner_->MakeDataAccess());
}

std::shared_ptr<TraceLog> JournalingCollaborators::MakeTraceLog() {
    return std::make_shared<RecordedTraceLog>(recorder_, inner_->MakeTraceLog());
}

std::shared_ptr<GuidService> JournalingCollaborators::MakeGuidService() {
    return std::make_shared<RecordedGuidService>(recorder_, inner_->MakeGuidService());
}

std::shared_ptr<TimeService> JournalingCollaborators::MakeTimeService() {
    return std::make_shared<RecordedTimeService>(recorder_, inner_->MakeTimeService());
}

std::shared_ptr<ArrayInspector> JournalingCollaborators::MakeArrayInspector() {
    return std::make_shared<RecordedArrayInspector>(recorder_, inner_->MakeArrayInspector());
}

std::shared_ptr<ScriptLibrary> JournalingCollaborators::MakeScriptLibrary() {
    return std::make_shared<RecordedScriptLibrary>(recorder_, inner_->MakeScriptLibrary());
}

std::shared_ptr<RandomSource> JournalingCollaborators::MakeRandomSource() {
    return std::make_shared<RecordedRandomSource>(recorder_, inner_->MakeRandomSource());
}

std::shared_ptr<Platform> JournalingCollaborators::MakePlatform() {
    return std::make_shared<RecordedPlatform>(recorder_, inner_->MakePlatform());
}

std::shared_ptr<ObjectFactory> JournalingCollaborators::MakeObjectFactory() {
    return std::make_shared<RecordedObjectFactory>(recorder_, inner_->MakeObjectFactory());
}

std::shared_ptr<ConnectionSettings> JournalingCollaborators::MakeConnectionSettings() {
    return std::make_shared<RecordedConnectionSettings>(recorder_, inner_->MakeConnectionSettings());
}

std::shared_ptr<SystemFlagReader> JournalingCollaborators::MakeSystemFlagReader() {
    return std::make_shared<RecordedSystemFlagReader>(recorder_, inner_->MakeSystemFlagReader());
}

std::shared_ptr<BatchSqlExecutor> JournalingCollaborators::MakeBatchSqlExecutor() {
    return std::make_shared<RecordedBatchSqlExecutor>(recorder_, inner_->MakeBatchSqlExecutor());
}

std::shared_ptr<EnvironmentInfo> JournalingCollaborators::MakeEnvironmentInfo() {
    return std::make_shared<RecordedEnvironmentInfo>(recorder_, inner_->MakeEnvironmentInfo());
}

std::shared_ptr<KeyedCollection> JournalingCollaborators::MakeKeyedCollection() {
    return std::make_shared<RecordedKeyedCollection>(recorder_, inner_->MakeKeyedCollection());
}

std::shared_ptr<StoreInformation> JournalingCollaborators::MakeStoreInformation() {
    return inner_->MakeStoreInformation();
}

std::shared_ptr<MethodObserver> JournalingCollaborators::MakeMethodObserver() {
    return recorder_;
}

}  // namespace kxjob

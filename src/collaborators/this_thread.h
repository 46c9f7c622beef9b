#pragma once

#include <memory>
#include <utility>

#include "collaborators/collaborator_factory.h"

namespace kxjob {

/// The collaborators of one thread: each is made on first use and kept.
class ThreadCollaborators {
public:
    explicit ThreadCollaborators(std::shared_ptr<CollaboratorFactory> factory);

    CollaboratorFactory& Factory() { return *factory_; }
    std::shared_ptr<CollaboratorFactory> SharedFactory() { return factory_; }
    MethodObserver* Observer() { return observer_.get(); }

    InputGuard& Guard() { return Slot(inputGuard_, &CollaboratorFactory::MakeInputGuard); }
    SqlFormatter& Formatter() { return Slot(sqlFormatter_, &CollaboratorFactory::MakeSqlFormatter); }
    DataAccess& Data() { return Slot(dataAccess_, &CollaboratorFactory::MakeDataAccess); }
    TraceLog& Log() { return Slot(traceLog_, &CollaboratorFactory::MakeTraceLog); }
    GuidService& Guids() { return Slot(guidService_, &CollaboratorFactory::MakeGuidService); }
    TimeService& Times() { return Slot(timeService_, &CollaboratorFactory::MakeTimeService); }
    ArrayInspector& Arrays() { return Slot(arrayInspector_, &CollaboratorFactory::MakeArrayInspector); }
    ScriptLibrary& Scripts() { return Slot(scriptLibrary_, &CollaboratorFactory::MakeScriptLibrary); }
    RandomSource& Random() { return Slot(randomSource_, &CollaboratorFactory::MakeRandomSource); }
    Platform& Objects() { return Slot(platform_, &CollaboratorFactory::MakePlatform); }

private:
    template <typename T>
    T& Slot(std::shared_ptr<T>& slot, std::shared_ptr<T> (CollaboratorFactory::*make)()) {
        if (slot == nullptr) slot = ((*factory_).*make)();
        return *slot;
    }

    std::shared_ptr<CollaboratorFactory> factory_;  // outlives what it made
    std::shared_ptr<MethodObserver> observer_;
    std::shared_ptr<InputGuard> inputGuard_;
    std::shared_ptr<SqlFormatter> sqlFormatter_;
    std::shared_ptr<DataAccess> dataAccess_;
    std::shared_ptr<TraceLog> traceLog_;
    std::shared_ptr<GuidService> guidService_;
    std::shared_ptr<TimeService> timeService_;
    std::shared_ptr<ArrayInspector> arrayInspector_;
    std::shared_ptr<ScriptLibrary> scriptLibrary_;
    std::shared_ptr<RandomSource> randomSource_;
    std::shared_ptr<Platform> platform_;
};

/// The calling thread's collaborators; made by the platform's factory unless another is installed.
ThreadCollaborators& ThisThread();

/// Gives the calling thread the collaborators of another factory, or of the platform's own for null. What the
/// thread had is released. Not to be called while one of the library's methods runs on the thread.
void InstallCollaborators(std::shared_ptr<CollaboratorFactory> factory);

/// Where the calling thread keeps its collaborators; null until the first are made or installed. The library
/// declares it and the build picks who defines it: what a thread owns can be released at its end only in ways
/// that differ from host to host.
std::unique_ptr<ThreadCollaborators>& ThreadSlot();

}  // namespace kxjob

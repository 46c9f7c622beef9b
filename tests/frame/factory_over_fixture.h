#pragma once

#include <memory>
#include <utility>

#include "collaborators/collaborator_factory.h"

namespace kxjob::testing_support {

/// Hands out what another factory makes: a test overrides what it wants to make itself. Installed like this:
///     InstallCollaborators(std::make_shared<MyFactory>(ThisThread().SharedFactory()));
class FactoryOverFixture : public CollaboratorFactory {
public:
    explicit FactoryOverFixture(std::shared_ptr<CollaboratorFactory> inner) : inner_(std::move(inner)) {}

    std::shared_ptr<InputGuard> MakeInputGuard() override { return inner_->MakeInputGuard(); }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override { return inner_->MakeSqlFormatter(); }
    std::shared_ptr<DataAccess> MakeDataAccess() override { return inner_->MakeDataAccess(); }
    std::shared_ptr<TraceLog> MakeTraceLog() override { return inner_->MakeTraceLog(); }
    std::shared_ptr<GuidService> MakeGuidService() override { return inner_->MakeGuidService(); }
    std::shared_ptr<TimeService> MakeTimeService() override { return inner_->MakeTimeService(); }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override { return inner_->MakeArrayInspector(); }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override { return inner_->MakeScriptLibrary(); }
    std::shared_ptr<RandomSource> MakeRandomSource() override { return inner_->MakeRandomSource(); }
    std::shared_ptr<Platform> MakePlatform() override { return inner_->MakePlatform(); }
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override { return inner_->MakeObjectFactory(); }
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override {
        return inner_->MakeConnectionSettings();
    }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override {
        return inner_->MakeSystemFlagReader();
    }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override {
        return inner_->MakeBatchSqlExecutor();
    }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override { return inner_->MakeEnvironmentInfo(); }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override { return inner_->MakeKeyedCollection(); }

private:
    std::shared_ptr<CollaboratorFactory> inner_;
};

/// The same, with an observer of every method.
class ObservedFactory : public FactoryOverFixture {
public:
    ObservedFactory(std::shared_ptr<CollaboratorFactory> inner, std::shared_ptr<MethodObserver> observer)
        : FactoryOverFixture(std::move(inner)), observer_(std::move(observer)) {}

    std::shared_ptr<MethodObserver> MakeMethodObserver() override { return observer_; }

private:
    std::shared_ptr<MethodObserver> observer_;
};

}  // namespace kxjob::testing_support

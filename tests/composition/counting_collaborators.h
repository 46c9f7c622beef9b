#pragma once

#include <memory>
#include <utility>

#include "collaborators/collaborator_factory.h"

namespace kxjob::testing_support {

/// How many objects that were made for calls are still there, and how many were ever made.
struct Census {
    int alive = 0;
    int made = 0;
};

/// The same object behind a reference that is counted until the last copy of it is gone.
template <typename T>
std::shared_ptr<T> Counted(std::shared_ptr<T> object, const std::shared_ptr<Census>& census) {
    ++census->alive;
    ++census->made;
    T* const plain = object.get();
    return {plain, [object = std::move(object), census](T*) mutable {
                object.reset();
                --census->alive;
            }};
}

/// What another factory makes, with every object that a method makes for itself counted, components included.
class CountingCollaborators : public CollaboratorFactory {
public:
    CountingCollaborators(std::shared_ptr<CollaboratorFactory> inner, std::shared_ptr<Census> census)
        : inner_(std::move(inner)), census_(std::move(census)) {}

    std::shared_ptr<InputGuard> MakeInputGuard() override { return inner_->MakeInputGuard(); }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override { return inner_->MakeSqlFormatter(); }
    std::shared_ptr<DataAccess> MakeDataAccess() override { return inner_->MakeDataAccess(); }
    std::shared_ptr<TraceLog> MakeTraceLog() override { return inner_->MakeTraceLog(); }
    std::shared_ptr<GuidService> MakeGuidService() override { return inner_->MakeGuidService(); }
    std::shared_ptr<TimeService> MakeTimeService() override { return inner_->MakeTimeService(); }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override { return inner_->MakeArrayInspector(); }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override { return inner_->MakeScriptLibrary(); }
    std::shared_ptr<RandomSource> MakeRandomSource() override { return inner_->MakeRandomSource(); }
    std::shared_ptr<Platform> MakePlatform() override;

    std::shared_ptr<ObjectFactory> MakeObjectFactory() override;
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override {
        return Counted(inner_->MakeConnectionSettings(), census_);
    }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override {
        return Counted(inner_->MakeSystemFlagReader(), census_);
    }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override {
        return Counted(inner_->MakeBatchSqlExecutor(), census_);
    }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override {
        return Counted(inner_->MakeEnvironmentInfo(), census_);
    }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override {
        return Counted(inner_->MakeKeyedCollection(), census_);
    }

private:
    std::shared_ptr<CollaboratorFactory> inner_;
    std::shared_ptr<Census> census_;
};

}  // namespace kxjob::testing_support

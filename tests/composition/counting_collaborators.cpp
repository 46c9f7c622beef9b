#include "composition/counting_collaborators.h"

#include <string>

namespace kxjob::testing_support {
namespace {

class CountingObjectFactory : public ObjectFactory {
public:
    CountingObjectFactory(std::shared_ptr<ObjectFactory> inner, std::shared_ptr<Census> census)
        : inner_(std::move(inner)), census_(std::move(census)) {}

    ComponentRef CreateVersioned(const std::string& progIdTemplate) override {
        return Counted(inner_->CreateVersioned(progIdTemplate), census_);
    }
    bool CanCreate(const std::string& progId) override { return inner_->CanCreate(progId); }

private:
    std::shared_ptr<ObjectFactory> inner_;
    std::shared_ptr<Census> census_;
};

class CountingPlatform : public Platform {
public:
    CountingPlatform(std::shared_ptr<Platform> inner, std::shared_ptr<Census> census)
        : inner_(std::move(inner)), census_(std::move(census)) {}

    ComponentRef CreateObject(const std::string& progId) override {
        return Counted(inner_->CreateObject(progId), census_);
    }

private:
    std::shared_ptr<Platform> inner_;
    std::shared_ptr<Census> census_;
};

}  // namespace

std::shared_ptr<Platform> CountingCollaborators::MakePlatform() {
    return std::make_shared<CountingPlatform>(inner_->MakePlatform(), census_);
}

std::shared_ptr<ObjectFactory> CountingCollaborators::MakeObjectFactory() {
    return Counted<ObjectFactory>(
        std::make_shared<CountingObjectFactory>(inner_->MakeObjectFactory(), census_), census_);
}

}  // namespace kxjob::testing_support

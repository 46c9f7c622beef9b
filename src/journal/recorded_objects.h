#pragma once

#include "collaborators/connection_settings.h"
#include "collaborators/keyed_collection.h"
#include "collaborators/object_factory.h"
#include "collaborators/platform.h"
#include "journal/connection_secrets.h"
#include "journal/recorded.h"
#include "journal/recorded_component.h"

namespace kxjob {

// The collaborators that create objects, and the objects that hold values.

class RecordedObjectFactory : public Recorded<ObjectFactory> {
public:
    using Recorded::Recorded;

    ComponentRef CreateVersioned(const std::string& progIdTemplate) override {
        return Record("ObjectFactory", "CreateVersioned", {progIdTemplate},
                      [&](ObjectFactory& inner) -> ComponentRef {
                          return std::make_shared<RecordedComponent>(
                              SharedRecorder(), inner.CreateVersioned(progIdTemplate), progIdTemplate);
                      });
    }
    bool CanCreate(const std::string& progId) override {
        return Forward("ObjectFactory", "CanCreate", &ObjectFactory::CanCreate, progId);
    }
};

class RecordedPlatform : public Recorded<Platform> {
public:
    using Recorded::Recorded;

    ComponentRef CreateObject(const std::string& progId) override {
        return Record("Platform", "CreateObject", {progId}, [&](Platform& inner) -> ComponentRef {
            return std::make_shared<RecordedComponent>(SharedRecorder(), inner.CreateObject(progId), progId);
        });
    }
};

class RecordedConnectionSettings : public Recorded<ConnectionSettings> {
public:
    using Recorded::Recorded;

    void LoadFromText(const std::string& text) override {
        Record("ConnectionSettings", "LoadFromText", {DocumentWithoutSecrets(text)},
               [&](ConnectionSettings& inner) { inner.LoadFromText(text); });
    }
    std::string ADOConnectionString() override {
        return Record(
            "ConnectionSettings", "ADOConnectionString", {},
            [](ConnectionSettings& inner) { return inner.ADOConnectionString(); },
            [](const std::string& text) { return WithoutSecrets(text); });
    }
    Value Provider() override {
        return Forward("ConnectionSettings", "Provider", &ConnectionSettings::Provider);
    }
    std::string NameSpaceQualifier() override {
        return Forward("ConnectionSettings", "NameSpaceQualifier", &ConnectionSettings::NameSpaceQualifier);
    }
};

class RecordedKeyedCollection : public Recorded<KeyedCollection> {
public:
    using Recorded::Recorded;

    void Add(const Value& item, const std::string& key) override {
        Forward("KeyedCollection", "Add", &KeyedCollection::Add, item, key);
    }
    bool Exists(const std::string& key) override {
        return Forward("KeyedCollection", "Exists", &KeyedCollection::Exists, key);
    }
    Value Item(const std::string& key) override {
        return Forward("KeyedCollection", "Item", &KeyedCollection::Item, key);
    }
};

}  // namespace kxjob

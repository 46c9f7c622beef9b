#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "collaborators/collaborator_factory.h"

namespace kxjob::testing_support {

class MockInputGuard : public InputGuard {
public:
    MOCK_METHOD(void, CheckParameter, (const std::string& value, const std::string& parameterName),
                (override));
};

class MockDataAccess : public DataAccess {
public:
    MOCK_METHOD(void, Execute, (const std::string&, DataStoreProvider, std::int32_t, const std::string&),
                (override));
    MOCK_METHOD(Value, Query, (const std::string&, DataStoreProvider, std::int32_t, const std::string&, bool),
                (override));
    MOCK_METHOD(void, WriteLongText,
                (const std::string&, DataStoreProvider, std::int32_t, const std::string&, const std::string&,
                 const std::string&, const std::string&, const std::string&, const std::string&,
                 LongTextOutputs&),
                (override));
};

class MockTraceLog : public TraceLog {
public:
    MOCK_METHOD(void, Write,
                (const std::string&, std::int32_t&, const std::string&, const std::string&,
                 const std::string&),
                (override));
    MOCK_METHOD(std::string, VersionOf, (const ComponentRef&), (override));
};

class MockGuidService : public GuidService {
public:
    MOCK_METHOD(std::string, NewGuid, (), (override));
    MOCK_METHOD(std::string, NullGuid, (), (override));
};

class MockTimeService : public TimeService {
public:
    MOCK_METHOD(std::string, NowISODateTime, (), (override));
    MOCK_METHOD(std::string, DurationText, (double), (override));
};

class MockScriptLibrary : public ScriptLibrary {
public:
    MOCK_METHOD(std::string, GetScript,
                (Collection&, DataStoreProvider, const std::string&, const std::string&, bool), (override));
};

class MockRandomSource : public RandomSource {
public:
    MOCK_METHOD(void, SeedFromTimer, (), (override));
    MOCK_METHOD(float, Next, (), (override));
};

class MockPlatform : public Platform {
public:
    MOCK_METHOD(ComponentRef, CreateObject, (const std::string&), (override));
};

class MockObjectFactory : public ObjectFactory {
public:
    MOCK_METHOD(ComponentRef, CreateVersioned, (const std::string&), (override));
    MOCK_METHOD(bool, CanCreate, (const std::string&), (override));
};

class MockConnectionSettings : public ConnectionSettings {
public:
    MOCK_METHOD(void, LoadFromText, (const std::string&), (override));
    MOCK_METHOD(std::string, ADOConnectionString, (), (override));
    MOCK_METHOD(Value, Provider, (), (override));
    MOCK_METHOD(std::string, NameSpaceQualifier, (), (override));
};

class MockSystemFlagReader : public SystemFlagReader {
public:
    MOCK_METHOD(Value, ReadFlag,
                (const std::string&, DataStoreProvider, const std::string&, const std::string&), (override));
};

class MockBatchSqlExecutor : public BatchSqlExecutor {
public:
    MOCK_METHOD(void, Open, (const std::string&, DataStoreProvider, std::int32_t), (override));
    MOCK_METHOD(void, Add, (const std::string&), (override));
    MOCK_METHOD(void, Flush, (), (override));
};

class MockEnvironmentInfo : public EnvironmentInfo {
public:
    MOCK_METHOD(std::int32_t, ProcessId, (), (override));
    MOCK_METHOD(std::int32_t, ThreadId, (), (override));
    MOCK_METHOD(std::string, FirstMachineText, (), (override));
    MOCK_METHOD(std::string, SecondMachineText, (), (override));
    MOCK_METHOD(std::string, FirstUserText, (), (override));
    MOCK_METHOD(std::string, SecondUserText, (), (override));
};

/// Calls show as GetMember(name), LetMember(name, value) and CallMember(name, arguments).
class MockComponent : public Component {
public:
    std::string Name() const override { return "MockComponent"; }
    Value Get(std::string_view property) override { return GetMember(std::string(property)); }
    void Let(std::string_view property, const Value& value) override {
        LetMember(std::string(property), value);
    }
    Value Call(std::string_view method, std::span<const Value> arguments) override {
        return CallMember(std::string(method), {arguments.begin(), arguments.end()});
    }

    MOCK_METHOD(Value, GetMember, (const std::string&));
    MOCK_METHOD(void, LetMember, (const std::string&, const Value&));
    MOCK_METHOD(Value, CallMember, (const std::string&, const std::vector<Value>&));
};

class MockMethodObserver : public MethodObserver {
public:
    MOCK_METHOD(void, Enter, (std::string_view, std::string_view, Arguments), (override));
    MOCK_METHOD(void, At, (std::int32_t), (override));
    MOCK_METHOD(void, Leave, (std::string_view, const Value*, Arguments), (override));
    MOCK_METHOD(void, Raise, (std::string_view, const AutomationError&), (override));
};

}  // namespace kxjob::testing_support

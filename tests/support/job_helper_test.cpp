#include "support/job_helper_test.h"

#include <utility>

namespace kxjob {

// These tests bring all collaborators themselves: the platform's own are not even linked.
std::shared_ptr<CollaboratorFactory> MakePlatformCollaborators() {
    throw AutomationError(error_number::kInternal, "ring_tests", "this test has installed no collaborators");
}

}  // namespace kxjob

namespace kxjob::testing_support {

using ::testing::Return;
using ::testing::StrictMock;

/// Hands out the fixture's objects.
class JobHelperTest::Factory : public CollaboratorFactory {
public:
    explicit Factory(JobHelperTest& test) : test_(test) {}

    std::shared_ptr<InputGuard> MakeInputGuard() override { return test_.guardRef; }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override { return std::make_shared<FakeSqlFormatter>(); }
    std::shared_ptr<DataAccess> MakeDataAccess() override { return test_.dataRef; }
    std::shared_ptr<TraceLog> MakeTraceLog() override { return test_.traceRef; }
    std::shared_ptr<GuidService> MakeGuidService() override { return test_.guidsRef; }
    std::shared_ptr<TimeService> MakeTimeService() override { return test_.timesRef; }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override {
        return std::make_shared<FakeArrayInspector>();
    }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override { return test_.scriptsRef; }
    std::shared_ptr<RandomSource> MakeRandomSource() override { return test_.randomRef; }
    std::shared_ptr<Platform> MakePlatform() override { return test_.platformRef; }
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override {
        ++test_.made.objectFactories;
        return test_.factoryRef;
    }
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override {
        ++test_.made.settings;
        return test_.settingsRef;
    }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override {
        ++test_.made.flagReaders;
        return test_.flagsRef;
    }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override {
        ++test_.made.executors;
        return test_.executorRef;
    }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override {
        ++test_.made.environments;
        return test_.environmentRef;
    }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override {
        ++test_.made.keyedCollections;
        return std::make_shared<FakeKeyedCollection>();
    }

private:
    JobHelperTest& test_;
};

JobHelperTest::JobHelperTest()
    : guardRef(std::make_shared<StrictMock<MockInputGuard>>()),
      dataRef(std::make_shared<StrictMock<MockDataAccess>>()),
      traceRef(std::make_shared<StrictMock<MockTraceLog>>()),
      guidsRef(std::make_shared<StrictMock<MockGuidService>>()),
      timesRef(std::make_shared<StrictMock<MockTimeService>>()),
      scriptsRef(std::make_shared<StrictMock<MockScriptLibrary>>()),
      randomRef(std::make_shared<StrictMock<MockRandomSource>>()),
      platformRef(std::make_shared<StrictMock<MockPlatform>>()),
      factoryRef(std::make_shared<StrictMock<MockObjectFactory>>()),
      settingsRef(std::make_shared<StrictMock<MockConnectionSettings>>()),
      flagsRef(std::make_shared<StrictMock<MockSystemFlagReader>>()),
      executorRef(std::make_shared<StrictMock<MockBatchSqlExecutor>>()),
      environmentRef(std::make_shared<StrictMock<MockEnvironmentInfo>>()),
      debugTools(std::make_shared<FakeDebugTools>()),
      tableNames(std::make_shared<FakeTableNameHelper>()),
      guard(*guardRef),
      data(*dataRef),
      trace(*traceRef),
      guids(*guidsRef),
      times(*timesRef),
      scripts(*scriptsRef),
      random(*randomRef),
      platform(*platformRef),
      factory(*factoryRef),
      settings(*settingsRef),
      flags(*flagsRef),
      executor(*executorRef),
      environment(*environmentRef) {
    InstallCollaborators(std::make_shared<Factory>(*this));
    // A pending error may be handed over at any time; what it was is checked by the helpers below.
    EXPECT_CALL(platform, CreateObject("DebugTools_83.Helper"))
        .Times(::testing::AnyNumber())
        .WillRepeatedly(Return(debugTools));
}

JobHelperTest::~JobHelperTest() {
    InstallCollaborators(nullptr);
}

void JobHelperTest::ExpectTableNames() {
    ExpectComponent("TableNameHelper_%v.TableNameHelper", tableNames);
}

void JobHelperTest::ExpectComponent(const std::string& progIdTemplate, const ComponentRef& component) {
    EXPECT_CALL(factory, CreateVersioned(progIdTemplate)).WillOnce(Return(component));
}

void JobHelperTest::ExpectTrace(const std::string& message, std::int32_t level, const std::string& method) {
    EXPECT_CALL(trace, Write(message, level, "Job_83", "JobHelper", method));
}

void JobHelperTest::ExpectConfiguration(const std::string& connectionString, const Value& provider,
                                        const std::string& nameQualifier) {
    const auto configurationHelper = std::make_shared<StrictMock<MockComponent>>();
    EXPECT_CALL(platform, CreateObject("cfgApiCom_83.ComVTLConfigHelper"))
        .WillOnce(Return(configurationHelper));
    EXPECT_CALL(*configurationHelper, CallMember("Init", ::testing::ElementsAre(Value(""))));
    EXPECT_CALL(*configurationHelper, GetMember("RMConnectionDocument")).WillOnce(Return("the document"));
    EXPECT_CALL(settings, LoadFromText("the document"));
    EXPECT_CALL(settings, ADOConnectionString()).WillOnce(Return(connectionString));
    EXPECT_CALL(settings, Provider()).WillOnce(Return(provider));
    EXPECT_CALL(settings, NameSpaceQualifier()).WillOnce(Return(nameQualifier));
}

Value JobHelperTest::Rows(std::int32_t columns, const std::vector<std::vector<Value>>& rows) {
    RowArray array(columns);
    for (const std::vector<Value>& row : rows) array.AddRow(row);
    return array;
}

void JobHelperTest::ExpectOwnError(const std::function<void()>& call, std::int32_t number,
                                   const std::string& method, const std::string& description,
                                   const std::vector<std::string>& frames) {
    const AutomationError error = ErrorOf(call);
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80040000U) + number);
    EXPECT_EQ(error.Source(), "Job_83.JobHelper." + method);
    EXPECT_EQ(error.Description(), description);
    ExpectTold(error, frames);
}

void JobHelperTest::ExpectPassedOn(const std::function<void()>& call, const AutomationError& raised,
                                   const std::vector<std::string>& frames) {
    const AutomationError error = ErrorOf(call);
    EXPECT_EQ(error.Number(), raised.Number());
    EXPECT_EQ(error.Source(), raised.Source());
    EXPECT_EQ(error.Description(), raised.Description());
    ExpectTold(error, frames);
}

void JobHelperTest::ExpectTold(const AutomationError& error, const std::vector<std::string>& frames) const {
    ASSERT_EQ(debugTools->told.size(), frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const FakeDebugTools::Told& told = debugTools->told[i];
        EXPECT_EQ(told.number, error.Number());
        EXPECT_EQ(told.source, error.Source());
        EXPECT_EQ(told.description, error.Description());
        EXPECT_EQ(told.applicationTitle, "Job_83");
        EXPECT_GT(told.line, 0);
        EXPECT_EQ(told.project, "Job_83");
        EXPECT_EQ(told.className, "JobHelper");
        EXPECT_EQ(told.method, frames[i]);
    }
}

}  // namespace kxjob::testing_support

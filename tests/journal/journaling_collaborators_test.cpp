#include "journal/journaling_collaborators.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <utility>

#include "journal/event_text.h"
#include "kxjob/array.h"
#include "kxjob/collection.h"
#include "support/fake_collaborators.h"
#include "support/mock_collaborators.h"

namespace kxjob {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Ref;
using testing::Return;
using testing::Throw;
using namespace testing_support;

constexpr const char* kSecret = "DSN=x;PWD=tiger";

/// Gives mocks out, one of each kind.
class MockFactory : public CollaboratorFactory {
public:
    template <typename T>
    using Mock = std::shared_ptr<NiceMock<T>>;

    std::shared_ptr<InputGuard> MakeInputGuard() override { return guard; }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override { return std::make_shared<FakeSqlFormatter>(); }
    std::shared_ptr<DataAccess> MakeDataAccess() override { return data; }
    std::shared_ptr<TraceLog> MakeTraceLog() override { return trace; }
    std::shared_ptr<GuidService> MakeGuidService() override { return guids; }
    std::shared_ptr<TimeService> MakeTimeService() override { return times; }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override {
        return std::make_shared<FakeArrayInspector>();
    }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override { return scripts; }
    std::shared_ptr<RandomSource> MakeRandomSource() override { return random; }
    std::shared_ptr<Platform> MakePlatform() override { return platform; }
    std::shared_ptr<ObjectFactory> MakeObjectFactory() override { return objects; }
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override { return settings; }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override { return flags; }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override { return executor; }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override { return environment; }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override {
        return std::make_shared<FakeKeyedCollection>();
    }

    Mock<MockInputGuard> guard = std::make_shared<NiceMock<MockInputGuard>>();
    Mock<MockDataAccess> data = std::make_shared<NiceMock<MockDataAccess>>();
    Mock<MockTraceLog> trace = std::make_shared<NiceMock<MockTraceLog>>();
    Mock<MockGuidService> guids = std::make_shared<NiceMock<MockGuidService>>();
    Mock<MockTimeService> times = std::make_shared<NiceMock<MockTimeService>>();
    Mock<MockScriptLibrary> scripts = std::make_shared<NiceMock<MockScriptLibrary>>();
    Mock<MockRandomSource> random = std::make_shared<NiceMock<MockRandomSource>>();
    Mock<MockPlatform> platform = std::make_shared<NiceMock<MockPlatform>>();
    Mock<MockObjectFactory> objects = std::make_shared<NiceMock<MockObjectFactory>>();
    Mock<MockConnectionSettings> settings = std::make_shared<NiceMock<MockConnectionSettings>>();
    Mock<MockSystemFlagReader> flags = std::make_shared<NiceMock<MockSystemFlagReader>>();
    Mock<MockBatchSqlExecutor> executor = std::make_shared<NiceMock<MockBatchSqlExecutor>>();
    Mock<MockEnvironmentInfo> environment = std::make_shared<NiceMock<MockEnvironmentInfo>>();
};

class JournalingCollaboratorsTest : public testing::Test {
protected:
    std::shared_ptr<MockFactory> inner = std::make_shared<MockFactory>();
    KeepingSink sink;
    std::unique_ptr<JournalingCollaborators> journaling =
        std::make_unique<JournalingCollaborators>(inner, sink);
    std::shared_ptr<NiceMock<MockComponent>> component = std::make_shared<NiceMock<MockComponent>>();
};

TEST_F(JournalingCollaboratorsTest, RecordsTheGuardAndItsRefusal) {
    EXPECT_CALL(*inner->guard, CheckParameter("kx_", "NameQualifier"));
    EXPECT_CALL(*inner->guard, CheckParameter("'", "JobGUID"))
        .WillOnce(Throw(AutomationError(701, "", "unsafe")));
    const auto guard = journaling->MakeInputGuard();
    guard->CheckParameter("kx_", "NameQualifier");
    EXPECT_THROW(guard->CheckParameter("'", "JobGUID"), AutomationError);
    EXPECT_THAT(sink.events, ElementsAre(":0 InputGuard.CheckParameter('kx_', 'NameQualifier')",
                                         ":0 InputGuard.CheckParameter(''', 'JobGUID') ! 701 unsafe"));
}

TEST_F(JournalingCollaboratorsTest, RecordsTheFormatter) {
    const auto formatter = journaling->MakeSqlFormatter();
    EXPECT_EQ(formatter->FormatValue(Null()), "NULL");
    EXPECT_EQ(formatter->FormatGuid("{G}"), "G({G})");
    EXPECT_THAT(sink.events, ElementsAre(":0 SqlFormatter.FormatValue(Null) = 'NULL'",
                                         ":0 SqlFormatter.FormatGuid('{G}') = 'G({G})'"));
}

TEST_F(JournalingCollaboratorsTest, RecordsStatementsWithoutThePassword) {
    RowArray rows(2);
    rows.AddRow({1, "a"});
    rows.AddRow({Null(), "b"});
    LongTextOutputs outputs;
    EXPECT_CALL(*inner->data, Execute(kSecret, 5, 1, "DELETE"));
    EXPECT_CALL(*inner->data, Query(kSecret, 5, 1, "SELECT", true)).WillOnce(Return(Value(rows)));
    EXPECT_CALL(*inner->data, Query(kSecret, 5, 1, "SELECT", false)).WillOnce(Return(Value()));
    EXPECT_CALL(*inner->data, WriteLongText(kSecret, 5, 1, "kx_", "job", "jobguid", "{J}", "parameters",
                                            "<p/>", Ref(outputs)));
    const auto data = journaling->MakeDataAccess();
    data->Execute(kSecret, 5, 1, "DELETE");
    EXPECT_EQ(data->Query(kSecret, 5, 1, "SELECT", true), Value(rows));
    EXPECT_TRUE(data->Query(kSecret, 5, 1, "SELECT", false).IsEmpty());
    data->WriteLongText(kSecret, 5, 1, "kx_", "job", "jobguid", "{J}", "parameters", "<p/>", outputs);
    EXPECT_THAT(
        sink.events,
        ElementsAre(":0 DataAccess.Execute('DSN=x;PWD=***', 5, 1, 'DELETE')",
                    ":0 DataAccess.Query('DSN=x;PWD=***', 5, 1, 'SELECT', True) = rows[1 'a'; Null 'b']",
                    ":0 DataAccess.Query('DSN=x;PWD=***', 5, 1, 'SELECT', False) = Empty",
                    ":0 DataAccess.WriteLongText('DSN=x;PWD=***', 5, 1, 'kx_', 'job', 'jobguid', '{J}', "
                    "'parameters', '<p/>')"));
}

TEST_F(JournalingCollaboratorsTest, RecordsTheBatchExecutorAndTheFlagReaderWithoutThePassword) {
    EXPECT_CALL(*inner->executor, Open(kSecret, 5, 100));
    EXPECT_CALL(*inner->executor, Add("INSERT"));
    EXPECT_CALL(*inner->executor, Flush());
    EXPECT_CALL(*inner->flags, ReadFlag(kSecret, 5, "kx_", "FLAG")).WillOnce(Return(Value("set")));
    const auto executor = journaling->MakeBatchSqlExecutor();
    executor->Open(kSecret, 5, 100);
    executor->Add("INSERT");
    executor->Flush();
    EXPECT_EQ(journaling->MakeSystemFlagReader()->ReadFlag(kSecret, 5, "kx_", "FLAG"), Value("set"));
    EXPECT_THAT(sink.events,
                ElementsAre(":0 BatchSqlExecutor.Open('DSN=x;PWD=***', 5, 100)",
                            ":0 BatchSqlExecutor.Add('INSERT')", ":0 BatchSqlExecutor.Flush()",
                            ":0 SystemFlagReader.ReadFlag('DSN=x;PWD=***', 5, 'kx_', 'FLAG') = 'set'"));
}

TEST_F(JournalingCollaboratorsTest, RecordsTheScriptLibrary) {
    Collection options;
    EXPECT_CALL(*inner->scripts, GetScript(Ref(options), 5, "kx_", "JobTablesDDL", true))
        .WillOnce(Return("CREATE"));
    EXPECT_EQ(journaling->MakeScriptLibrary()->GetScript(options, 5, "kx_", "JobTablesDDL", true), "CREATE");
    EXPECT_THAT(
        sink.events,
        ElementsAre(":0 ScriptLibrary.GetScript(<Collection>, 5, 'kx_', 'JobTablesDDL', True) = 'CREATE'"));
}

TEST_F(JournalingCollaboratorsTest, RecordsATraceLineWithTheLevelsValueAndHandsTheVariableOn) {
    std::int32_t level = 4;
    EXPECT_CALL(*inner->trace, Write("message", Ref(level), "Job_83", "JobHelper", "CreateJob"));
    EXPECT_CALL(*inner->trace, VersionOf(ComponentRef(component))).WillOnce(Return("8.3"));
    const auto trace = journaling->MakeTraceLog();
    trace->Write("message", level, "Job_83", "JobHelper", "CreateJob");
    EXPECT_EQ(trace->VersionOf(component), "8.3");
    EXPECT_THAT(sink.events,
                ElementsAre(":0 TraceLog.Write('message', 4, 'Job_83', 'JobHelper', 'CreateJob')",
                            ":0 TraceLog.VersionOf(<MockComponent>) = '8.3'"));
}

TEST_F(JournalingCollaboratorsTest, RecordsGuidsTimesAndChance) {
    ON_CALL(*inner->guids, NewGuid()).WillByDefault(Return("{N}"));
    ON_CALL(*inner->guids, NullGuid()).WillByDefault(Return("{0}"));
    ON_CALL(*inner->times, NowISODateTime()).WillByDefault(Return("now"));
    ON_CALL(*inner->times, DurationText(1.5)).WillByDefault(Return("1.5 s"));
    ON_CALL(*inner->random, Next()).WillByDefault(Return(0.25F));
    EXPECT_CALL(*inner->random, SeedFromTimer());
    EXPECT_EQ(journaling->MakeGuidService()->NewGuid(), "{N}");
    EXPECT_EQ(journaling->MakeGuidService()->NullGuid(), "{0}");
    EXPECT_EQ(journaling->MakeTimeService()->NowISODateTime(), "now");
    EXPECT_EQ(journaling->MakeTimeService()->DurationText(1.5), "1.5 s");
    journaling->MakeRandomSource()->SeedFromTimer();
    EXPECT_EQ(journaling->MakeRandomSource()->Next(), 0.25F);
    EXPECT_THAT(
        sink.events,
        ElementsAre(":0 GuidService.NewGuid() = '{N}'", ":0 GuidService.NullGuid() = '{0}'",
                    ":0 TimeService.NowISODateTime() = 'now'", ":0 TimeService.DurationText(1.5d) = '1.5 s'",
                    ":0 RandomSource.SeedFromTimer()", ":0 RandomSource.Next() = 0.25d"));
}

TEST_F(JournalingCollaboratorsTest, RecordsTheShapeOfAnArrayWithTheArrayItself) {
    const Value array = Array::List({"a", "b"}, 1);
    const auto arrays = journaling->MakeArrayInspector();
    EXPECT_EQ(arrays->LowerBound(array), 1);
    EXPECT_EQ(arrays->UpperBound(array), 2);
    EXPECT_EQ(arrays->ElementCount(array), 2);
    EXPECT_EQ(arrays->DimensionCount(array), 1);
    EXPECT_THAT(sink.events, ElementsAre(":0 ArrayInspector.LowerBound(['a', 'b']) = 1",
                                         ":0 ArrayInspector.UpperBound(['a', 'b']) = 2",
                                         ":0 ArrayInspector.ElementCount(['a', 'b']) = 2",
                                         ":0 ArrayInspector.DimensionCount(['a', 'b']) = 1"));
}

TEST_F(JournalingCollaboratorsTest, RecordsTheEnvironment) {
    ON_CALL(*inner->environment, ProcessId()).WillByDefault(Return(11));
    ON_CALL(*inner->environment, ThreadId()).WillByDefault(Return(12));
    ON_CALL(*inner->environment, FirstMachineText()).WillByDefault(Return("m1"));
    ON_CALL(*inner->environment, SecondMachineText()).WillByDefault(Return("m2"));
    ON_CALL(*inner->environment, FirstUserText()).WillByDefault(Return("u1"));
    ON_CALL(*inner->environment, SecondUserText()).WillByDefault(Return("u2"));
    const auto environment = journaling->MakeEnvironmentInfo();
    EXPECT_EQ(environment->ProcessId(), 11);
    EXPECT_EQ(environment->ThreadId(), 12);
    EXPECT_EQ(environment->FirstMachineText(), "m1");
    EXPECT_EQ(environment->SecondMachineText(), "m2");
    EXPECT_EQ(environment->FirstUserText(), "u1");
    EXPECT_EQ(environment->SecondUserText(), "u2");
    EXPECT_THAT(sink.events,
                ElementsAre(":0 EnvironmentInfo.ProcessId() = 11", ":0 EnvironmentInfo.ThreadId() = 12",
                            ":0 EnvironmentInfo.FirstMachineText() = 'm1'",
                            ":0 EnvironmentInfo.SecondMachineText() = 'm2'",
                            ":0 EnvironmentInfo.FirstUserText() = 'u1'",
                            ":0 EnvironmentInfo.SecondUserText() = 'u2'"));
}

TEST_F(JournalingCollaboratorsTest, RecordsTheKeyedCollection) {
    const auto map = journaling->MakeKeyedCollection();
    map->Add(5, "key");
    EXPECT_TRUE(map->Exists("key"));
    EXPECT_EQ(map->Item("key"), Value(5));
    EXPECT_THAT(sink.events,
                ElementsAre(":0 KeyedCollection.Add(5, 'key')", ":0 KeyedCollection.Exists('key') = True",
                            ":0 KeyedCollection.Item('key') = 5"));
}

TEST_F(JournalingCollaboratorsTest, RecordsTheConfigurationWithoutThePassword) {
    EXPECT_CALL(*inner->settings, LoadFromText("ADOConnectionString=DSN=x;PWD=tiger\nProvider=5"));
    ON_CALL(*inner->settings, ADOConnectionString()).WillByDefault(Return(kSecret));
    ON_CALL(*inner->settings, Provider()).WillByDefault(Return(Value(5)));
    ON_CALL(*inner->settings, NameSpaceQualifier()).WillByDefault(Return("kx_"));
    const auto settings = journaling->MakeConnectionSettings();
    settings->LoadFromText("ADOConnectionString=DSN=x;PWD=tiger\nProvider=5");
    EXPECT_EQ(settings->ADOConnectionString(), kSecret);
    EXPECT_EQ(settings->Provider(), Value(5));
    EXPECT_EQ(settings->NameSpaceQualifier(), "kx_");
    EXPECT_THAT(
        sink.events,
        ElementsAre(":0 ConnectionSettings.LoadFromText('ADOConnectionString=DSN=x;PWD=***\nProvider=5')",
                    ":0 ConnectionSettings.ADOConnectionString() = 'DSN=x;PWD=***'",
                    ":0 ConnectionSettings.Provider() = 5",
                    ":0 ConnectionSettings.NameSpaceQualifier() = 'kx_'"));
}

TEST_F(JournalingCollaboratorsTest, RecordsAComponentUnderTheTemplateThatWasAskedFor) {
    EXPECT_CALL(*inner->objects, CreateVersioned("AppModelAdmin_%v.Admin")).WillOnce(Return(component));
    EXPECT_CALL(*component, CallMember("AdminHistoryWrite", ElementsAre(Value(kSecret), Value("kx_"))));
    EXPECT_CALL(*component, CallMember("Ask", IsEmpty())).WillOnce(Return(Value("answer")));
    EXPECT_CALL(*component, LetMember("logLevel", Value(4)));
    EXPECT_CALL(*component, GetMember("Document")).WillOnce(Return(Value("a=b;PWD=tiger")));
    const ComponentRef admin = journaling->MakeObjectFactory()->CreateVersioned("AppModelAdmin_%v.Admin");
    admin->Call("AdminHistoryWrite", std::array<Value, 2>{kSecret, "kx_"});
    EXPECT_EQ(admin->Call("Ask", {}), Value("answer"));
    admin->Let("logLevel", 4);
    EXPECT_EQ(admin->Get("Document"), Value("a=b;PWD=tiger"));
    EXPECT_THAT(
        sink.events,
        ElementsAre(":0 ObjectFactory.CreateVersioned('AppModelAdmin_%v.Admin') = <AppModelAdmin_%v.Admin>",
                    ":0 AppModelAdmin_%v.Admin.AdminHistoryWrite('DSN=x;PWD=***', 'kx_')",
                    ":0 AppModelAdmin_%v.Admin.Ask() = 'answer'", ":0 AppModelAdmin_%v.Admin.logLevel(4)",
                    ":0 AppModelAdmin_%v.Admin.Document() = 'a=b;PWD=***'"));
}

TEST_F(JournalingCollaboratorsTest, RecordsWhetherAComponentCanBeCreated) {
    EXPECT_CALL(*inner->objects, CanCreate("Jobs_83.Worker")).WillOnce(Return(true));
    EXPECT_TRUE(journaling->MakeObjectFactory()->CanCreate("Jobs_83.Worker"));
    EXPECT_THAT(sink.events, ElementsAre(":0 ObjectFactory.CanCreate('Jobs_83.Worker') = True"));
}

TEST_F(JournalingCollaboratorsTest, RecordsAComponentOfThePlatformAndItsFailure) {
    EXPECT_CALL(*inner->platform, CreateObject("DebugTools_83.Helper")).WillOnce(Return(component));
    EXPECT_CALL(*component, CallMember("LogAndReRaiseVBError", _))
        .WillOnce(Throw(AutomationError(7, "s", "again")));
    const ComponentRef helper = journaling->MakePlatform()->CreateObject("DebugTools_83.Helper");
    EXPECT_THROW(helper->Call("LogAndReRaiseVBError", std::array<Value, 1>{12}), AutomationError);
    EXPECT_THAT(sink.events,
                ElementsAre(":0 Platform.CreateObject('DebugTools_83.Helper') = <DebugTools_83.Helper>",
                            ":0 DebugTools_83.Helper.LogAndReRaiseVBError(12) ! 7 again"));
}

TEST_F(JournalingCollaboratorsTest, WatchesTheMethods) {
    journaling->MakeMethodObserver()->Enter("JobHelper", "Version", {});
    journaling->MakeMethodObserver()->At(3);
    journaling->MakeGuidService()->NullGuid();
    EXPECT_THAT(sink.events, ElementsAre("enter Version()", "Version:3 GuidService.NullGuid() = ''"));
}

TEST_F(JournalingCollaboratorsTest, LeavesWorkingObjectsBehindThatRecordNothing) {
    ON_CALL(*inner->settings, NameSpaceQualifier()).WillByDefault(Return("kx_"));
    const auto settings = journaling->MakeConnectionSettings();
    journaling.reset();
    EXPECT_EQ(settings->NameSpaceQualifier(), "kx_");
    EXPECT_THAT(sink.events, IsEmpty());
}

}  // namespace
}  // namespace kxjob

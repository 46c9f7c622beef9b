#include "support/faulty_world.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>

#include "kxjob/array.h"
#include "support/every_method.h"
#include "support/fake_collaborators.h"

namespace kxjob::testing_support {

void FaultyRun::Step(const std::string& what) {
    if (fault.has_value()) {
        stepsAfterFault.push_back(what);
        return;
    }
    steps.push_back(what);
    if (steps.size() != failingStep) return;
    runningAtFault.assign(running.rbegin(), running.rend());
    fault.emplace(static_cast<std::int32_t>(0x8004ABCDU), "Faulty_83." + what,
                  "the fault of step " + std::to_string(failingStep));
    throw AutomationError(*fault);
}

std::ptrdiff_t FaultyRun::CountOf(const std::string& step) const {
    return std::count(steps.begin(), steps.end(), step);
}

namespace {

/// Counted among the living as long as it is there.
class Presence {
public:
    Presence(FaultyRun& run, std::string kind) : run_(run), kind_(std::move(kind)) { ++run_.alive[kind_]; }
    Presence(const Presence&) = delete;
    Presence& operator=(const Presence&) = delete;
    ~Presence() {
        if (--run_.alive[kind_] == 0) run_.alive.erase(kind_);
    }

private:
    FaultyRun& run_;
    std::string kind_;
};

/// What all collaborators have in common.
class Stepping {
public:
    explicit Stepping(FaultyRun& run) : run_(run) {}

protected:
    void Step(const char* what) const { run_.Step(what); }
    FaultyRun& Run() const { return run_; }

private:
    FaultyRun& run_;
};

/// The same for those that a method makes and must release.
class SteppingAndCounted : public Stepping {
public:
    SteppingAndCounted(FaultyRun& run, const char* kind) : Stepping(run), presence_(run, kind) {}

private:
    Presence presence_;
};

Value Rows(const std::vector<std::vector<Value>>& rows) {
    RowArray array(static_cast<std::int32_t>(rows.front().size()));
    for (const std::vector<Value>& row : rows) array.AddRow(row);
    return array;
}

constexpr const char* kNewGuidText = "{00000000-0000-4000-8000-00000000F001}";

/// A row of GetJob: 14 columns, the job's GUID first.
std::vector<Value> JobRow(const char* guid) {
    std::vector<Value> row(14, Value("x"));
    row[0] = guid;
    return row;
}

Value JobsAtWork(StoredJobs storedJobs) {
    std::vector<std::vector<Value>> rows{{"{R1}", kJobType, "RUNNING"},
                                         {"{R2}", kJobType, "RUNNING"},
                                         {"{R3}", kJobType, "RUNNING"},
                                         {"{X1}", "ELSEWHERE", "RUNNING"},
                                         {"{X2}", kJobType, "Running"}};
    if (storedJobs == StoredJobs::QueuedAndRunning) {
        rows.push_back({"{Q1}", kJobType, "QUEUED"});
        rows.push_back({"{Q2}", kJobType, "QUEUED"});
    }
    return Rows(rows);
}

/// Rows for every query, so that each method has all of its work to do.
Value Answer(const std::string& sql, StoredJobs storedJobs) {
    const std::array<std::pair<std::string_view, Value>, 9> answers{{
        {"SELECT jobguid, jobtypeid, jobstateid FROM ", JobsAtWork(storedJobs)},
        {"SELECT jobguid, COUNT(*) FROM ", Rows({{"{R1}", 2}, {"{R2}", 1}, {"{R3}", 1}})},
        {"SELECT jobguid, description, jobtypeid, parameters, ", Rows({JobRow("{J1}"), JobRow("{J2}")})},
        {"SELECT jobtypeid, description, implprogid, ",
         Rows(
             {{kJobType, "Nightly totals", "Here_83.Totals", ""}, {"ELSEWHERE", "x", "Elsewhere_83.X", ""}})},
        {"SELECT jobguid, jobtypeid FROM ", Rows({{"{J1}", kJobType}, {"{J2}", kJobType}})},
        {"SELECT jobguid FROM ", Rows({{"{J1}"}, {"{J2}"}})},
        {"SELECT jobeditorlockguid FROM ", Rows({{kNewGuidText}})},
        {"SELECT failurenote FROM ", Rows({{"an older note"}})},
        {"SELECT parameters FROM ", Rows({{"<parameters/>"}})},
    }};
    for (const auto& [beginning, rows] : answers) {
        if (sql.starts_with(beginning)) return rows;
    }
    return Rows({{"x"}});
}

class FaultyGuard : public InputGuard, Stepping {
public:
    using Stepping::Stepping;
    void CheckParameter(const std::string&, const std::string&) override {
        Step("InputGuard.CheckParameter");
    }
};

class FaultyFormatter : public FakeSqlFormatter, Stepping {
public:
    using Stepping::Stepping;
    std::string FormatValue(const Value& value) override {
        Step("SqlFormatter.FormatValue");
        return FakeSqlFormatter::FormatValue(value);
    }
    std::string FormatGuid(const std::string& guid) override {
        Step("SqlFormatter.FormatGuid");
        return FakeSqlFormatter::FormatGuid(guid);
    }
};

class FaultyData : public DataAccess, Stepping {
public:
    using Stepping::Stepping;
    void Execute(const std::string&, DataStoreProvider, std::int32_t, const std::string&) override {
        Step("DataAccess.Execute");
    }
    Value Query(const std::string&, DataStoreProvider, std::int32_t, const std::string& sql, bool) override {
        Step("DataAccess.Query");
        return Answer(sql, Run().storedJobs);
    }
    void WriteLongText(const std::string&, DataStoreProvider, std::int32_t, const std::string&,
                       const std::string&, const std::string&, const std::string&, const std::string&,
                       const std::string&, LongTextOutputs&) override {
        Step("DataAccess.WriteLongText");
    }
};

class FaultyTrace : public TraceLog, Stepping {
public:
    using Stepping::Stepping;
    void Write(const std::string&, std::int32_t&, const std::string&, const std::string&,
               const std::string&) override {
        Step("TraceLog.Write");
    }
    std::string VersionOf(const ComponentRef&) override {
        Step("TraceLog.VersionOf");
        return "8.3.1202.0";
    }
};

class FaultyGuids : public GuidService, Stepping {
public:
    using Stepping::Stepping;
    std::string NewGuid() override {
        Step("GuidService.NewGuid");
        return kNewGuidText;
    }
    std::string NullGuid() override {
        Step("GuidService.NullGuid");
        return "{00000000-0000-0000-0000-000000000000}";
    }
};

class FaultyTimes : public TimeService, Stepping {
public:
    using Stepping::Stepping;
    std::string NowISODateTime() override {
        Step("TimeService.NowISODateTime");
        return "2026-03-01T09:30:15.123Z";
    }
    std::string DurationText(double) override {
        Step("TimeService.DurationText");
        return "1 min 30.5 s";
    }
};

class FaultyArrays : public FakeArrayInspector, Stepping {
public:
    using Stepping::Stepping;
    std::int32_t LowerBound(const Value& array) override {
        Step("ArrayInspector.LowerBound");
        return FakeArrayInspector::LowerBound(array);
    }
    std::int32_t UpperBound(const Value& array) override {
        Step("ArrayInspector.UpperBound");
        return FakeArrayInspector::UpperBound(array);
    }
    std::int32_t ElementCount(const Value& array) override {
        Step("ArrayInspector.ElementCount");
        return FakeArrayInspector::ElementCount(array);
    }
    std::int32_t DimensionCount(const Value& array) override {
        Step("ArrayInspector.DimensionCount");
        return FakeArrayInspector::DimensionCount(array);
    }
};

class FaultyScripts : public ScriptLibrary, Stepping {
public:
    using Stepping::Stepping;
    std::string GetScript(Collection&, DataStoreProvider, const std::string&, const std::string&,
                          bool) override {
        Step("ScriptLibrary.GetScript");
        return "CREATE TABLE job;\n";
    }
};

class FaultyRandom : public RandomSource, Stepping {
public:
    using Stepping::Stepping;
    void SeedFromTimer() override { Step("RandomSource.SeedFromTimer"); }
    float Next() override {
        Step("RandomSource.Next");
        return 0.5F;
    }
};

/// Any component of the application: it has the members that were given to it, each with its answer.
class FaultyComponent : public Component, SteppingAndCounted {
public:
    FaultyComponent(FaultyRun& run, std::string name, std::map<std::string, Value, std::less<>> members)
        : SteppingAndCounted(run, "component"), name_(std::move(name)), members_(std::move(members)) {}

    std::string Name() const override { return name_; }
    Value Get(std::string_view property) override { return Reach(property); }
    void Let(std::string_view property, const Value&) override { Reach(property); }
    Value Call(std::string_view method, std::span<const Value>) override { return Reach(method); }

private:
    Value Reach(std::string_view member) {
        Run().Step("component." + std::string(member));
        const auto found = members_.find(member);
        if (found == members_.end()) RaiseUnknownMember(member);
        return found->second;
    }

    std::string name_;
    std::map<std::string, Value, std::less<>> members_;
};

ComponentRef CreateFaultyComponent(FaultyRun& run, const std::string& progId) {
    const auto create = [&](std::map<std::string, Value, std::less<>> members) {
        return std::make_shared<FaultyComponent>(run, progId, std::move(members));
    };
    if (progId == "TableNameHelper_%v.TableNameHelper") {
        return create(
            {{"job", "job"}, {"JobItem", "JobItem"}, {"jobtask", "jobtask"}, {"JobType", "JobType"}});
    }
    if (progId == "ApplicationSchema_%v.Schema") {
        return create({{"ListOfContainerSubSystems", Array::List({"ADMIN", "RUNTIME"})}});
    }
    if (progId == "AppModelAdmin_%v.Admin") {
        return create({{"AdminHistoryWrite", {}}, {"ApplicationStateReadGUID", kStateGuid}});
    }
    if (progId == "ContentExecHelper_%v.ContentExec") return create({{"ContentBlobUpdate", {}}});
    if (progId == "kxTimer_%v.Timer") {
        return create({{"setModuleName", {}}, {"logLevel", {}}, {"Start", {}}, {"Duration", 1.5}});
    }
    if (progId == "cfgApiCom_83.ComVTLConfigHelper") {
        return create({{"Init", {}}, {"RMConnectionDocument", "the document"}});
    }
    RaiseRuntimeError(error_number::kClassNotRegistered, progId);
}

class FaultyObjectFactory : public ObjectFactory, SteppingAndCounted {
public:
    explicit FaultyObjectFactory(FaultyRun& run) : SteppingAndCounted(run, "ObjectFactory") {}
    ComponentRef CreateVersioned(const std::string& progIdTemplate) override {
        Step("ObjectFactory.CreateVersioned");
        return CreateFaultyComponent(Run(), progIdTemplate);
    }
    bool CanCreate(const std::string& progId) override {
        Step("ObjectFactory.CanCreate");
        return progId == "Here_83.Totals";
    }
};

class FaultySettings : public ConnectionSettings, SteppingAndCounted {
public:
    explicit FaultySettings(FaultyRun& run) : SteppingAndCounted(run, "ConnectionSettings") {}
    void LoadFromText(const std::string&) override { Step("ConnectionSettings.LoadFromText"); }
    std::string ADOConnectionString() override {
        Step("ConnectionSettings.ADOConnectionString");
        return "configured";
    }
    Value Provider() override {
        Step("ConnectionSettings.Provider");
        return "5";
    }
    std::string NameSpaceQualifier() override {
        Step("ConnectionSettings.NameSpaceQualifier");
        return "cfg_";
    }
};

class FaultyFlagReader : public SystemFlagReader, SteppingAndCounted {
public:
    explicit FaultyFlagReader(FaultyRun& run) : SteppingAndCounted(run, "SystemFlagReader") {}
    Value ReadFlag(const std::string&, DataStoreProvider, const std::string&, const std::string&) override {
        Step("SystemFlagReader.ReadFlag");
        return Null();
    }
};

class FaultyExecutor : public BatchSqlExecutor, SteppingAndCounted {
public:
    explicit FaultyExecutor(FaultyRun& run) : SteppingAndCounted(run, "BatchSqlExecutor") {}
    void Open(const std::string&, DataStoreProvider, std::int32_t) override { Step("BatchSqlExecutor.Open"); }
    void Add(const std::string&) override { Step("BatchSqlExecutor.Add"); }
    void Flush() override { Step("BatchSqlExecutor.Flush"); }
};

class FaultyEnvironment : public EnvironmentInfo, SteppingAndCounted {
public:
    explicit FaultyEnvironment(FaultyRun& run) : SteppingAndCounted(run, "EnvironmentInfo") {}
    std::int32_t ProcessId() override {
        Step("EnvironmentInfo.ProcessId");
        return 71;
    }
    std::int32_t ThreadId() override {
        Step("EnvironmentInfo.ThreadId");
        return 72;
    }
    std::string FirstMachineText() override { return Part("EnvironmentInfo.FirstMachineText"); }
    std::string SecondMachineText() override { return Part("EnvironmentInfo.SecondMachineText"); }
    std::string FirstUserText() override { return Part("EnvironmentInfo.FirstUserText"); }
    std::string SecondUserText() override { return Part("EnvironmentInfo.SecondUserText"); }

private:
    std::string Part(const char* what) {
        Step(what);
        return "x";
    }
};

class FaultyKeyedCollection : public FakeKeyedCollection, SteppingAndCounted {
public:
    explicit FaultyKeyedCollection(FaultyRun& run) : SteppingAndCounted(run, "KeyedCollection") {}
    void Add(const Value& item, const std::string& key) override {
        Step("KeyedCollection.Add");
        FakeKeyedCollection::Add(item, key);
    }
    bool Exists(const std::string& key) override {
        Step("KeyedCollection.Exists");
        return FakeKeyedCollection::Exists(key);
    }
    Value Item(const std::string& key) override {
        Step("KeyedCollection.Item");
        return FakeKeyedCollection::Item(key);
    }
};

/// Writes down what it is told. It is no step: it must be reached after every fault.
class RecordingDebugTools : public Component, SteppingAndCounted {
public:
    explicit RecordingDebugTools(FaultyRun& run) : SteppingAndCounted(run, "DebugTools") {}

    std::string Name() const override { return "DebugTools_83.Helper"; }
    Value Call(std::string_view method, std::span<const Value> arguments) override {
        if (method != "LogAndReRaiseVBError") return Component::Call(method, arguments);
        RequireArguments(method, arguments, 6);
        Component& error = *arguments[0].Object();
        Component& application = *arguments[1].Object();
        const FaultyRun::Told told{error.Get("Number").ToInt32(),
                                   error.Get("Source").Text(),
                                   error.Get("Description").Text(),
                                   application.Get("Title").Text() + " " + application.Get("Major").ToText() +
                                       "." + application.Get("Minor").ToText() + "." +
                                       application.Get("Revision").ToText(),
                                   arguments[2].ToInt32(),
                                   arguments[3].Text(),
                                   arguments[4].Text(),
                                   arguments[5].Text()};
        Run().told.push_back(told);
        if (Run().errorLogger == ErrorLogger::Returns) return {};
        throw AutomationError(told.number, told.source, told.description);
    }
};

class FaultyPlatform : public Platform, Stepping {
public:
    using Stepping::Stepping;
    ComponentRef CreateObject(const std::string& progId) override {
        if (progId == "DebugTools_83.Helper") {
            if (Run().errorLogger == ErrorLogger::CannotBeCreated) {
                RaiseRuntimeError(error_number::kClassNotRegistered, progId);
            }
            return std::make_shared<RecordingDebugTools>(Run());
        }
        Step("Platform.CreateObject");
        return CreateFaultyComponent(Run(), progId);
    }
};

/// Keeps which methods are running, and where.
class RunningMethods : public MethodObserver, Stepping {
public:
    using Stepping::Stepping;
    void Enter(std::string_view className, std::string_view method, Arguments) override {
        Run().running.push_back({std::string(className), std::string(method), 0});
    }
    void At(std::int32_t line) override { Run().running.back().line = line; }
    void Leave(std::string_view, const Value*, Arguments) override { Run().running.pop_back(); }
    void Raise(std::string_view, const AutomationError&) override { Run().running.pop_back(); }
};

class FaultyFactory : public CollaboratorFactory, Stepping {
public:
    using Stepping::Stepping;

    std::shared_ptr<InputGuard> MakeInputGuard() override { return Make<FaultyGuard>("InputGuard"); }
    std::shared_ptr<SqlFormatter> MakeSqlFormatter() override {
        return Make<FaultyFormatter>("SqlFormatter");
    }
    std::shared_ptr<DataAccess> MakeDataAccess() override { return Make<FaultyData>("DataAccess"); }
    std::shared_ptr<TraceLog> MakeTraceLog() override { return Make<FaultyTrace>("TraceLog"); }
    std::shared_ptr<GuidService> MakeGuidService() override { return Make<FaultyGuids>("GuidService"); }
    std::shared_ptr<TimeService> MakeTimeService() override { return Make<FaultyTimes>("TimeService"); }
    std::shared_ptr<ArrayInspector> MakeArrayInspector() override {
        return Make<FaultyArrays>("ArrayInspector");
    }
    std::shared_ptr<ScriptLibrary> MakeScriptLibrary() override {
        return Make<FaultyScripts>("ScriptLibrary");
    }
    std::shared_ptr<RandomSource> MakeRandomSource() override { return Make<FaultyRandom>("RandomSource"); }
    std::shared_ptr<Platform> MakePlatform() override {
        // After a fault it is the road to the error-logging component, and no step.
        if (Run().fault.has_value()) return std::make_shared<FaultyPlatform>(Run());
        return Make<FaultyPlatform>("Platform");
    }

    std::shared_ptr<ObjectFactory> MakeObjectFactory() override {
        return Make<FaultyObjectFactory>("ObjectFactory");
    }
    std::shared_ptr<ConnectionSettings> MakeConnectionSettings() override {
        return Make<FaultySettings>("ConnectionSettings");
    }
    std::shared_ptr<SystemFlagReader> MakeSystemFlagReader() override {
        return Make<FaultyFlagReader>("SystemFlagReader");
    }
    std::shared_ptr<BatchSqlExecutor> MakeBatchSqlExecutor() override {
        return Make<FaultyExecutor>("BatchSqlExecutor");
    }
    std::shared_ptr<EnvironmentInfo> MakeEnvironmentInfo() override {
        return Make<FaultyEnvironment>("EnvironmentInfo");
    }
    std::shared_ptr<KeyedCollection> MakeKeyedCollection() override {
        return Make<FaultyKeyedCollection>("KeyedCollection");
    }
    std::shared_ptr<MethodObserver> MakeMethodObserver() override {
        return Run().isObserved ? std::make_shared<RunningMethods>(Run()) : nullptr;
    }

private:
    template <typename T>
    std::shared_ptr<T> Make(const char* what) {
        Run().Step(std::string("making ") + what);
        return std::make_shared<T>(Run());
    }
};

}  // namespace

std::shared_ptr<CollaboratorFactory> MakeFaultyWorld(FaultyRun& run) {
    return std::make_shared<FaultyFactory>(run);
}

}  // namespace kxjob::testing_support

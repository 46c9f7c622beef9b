#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "collaborators/collaborator_factory.h"
#include "collaborators/this_thread.h"
#include "defaults/configuration/environment_variable.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using testing::HasSubstr;
using testing_support::EnvironmentVariable;
using testing_support::ErrorOf;
using testing_support::Rows;
using testing_support::TemporaryDatabase;
using testing_support::TemporaryFolder;

class NativeCollaborators : public testing::Test {
protected:
    void Configure(const std::string& text) { std::ofstream(folder_.Path("kxjob.conf")) << text; }
    std::string LogText() {
        std::ifstream in(folder_.Path("kxjob.log"));
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    TemporaryFolder folder_;
    EnvironmentVariable configuration_{"KXJOB_CONFIG", folder_.Path("kxjob.conf").string()};
    std::shared_ptr<CollaboratorFactory> factory_ = MakePlatformCollaborators();
};

TEST_F(NativeCollaborators, AreAllThere) {
    Configure("");
    EXPECT_NE(factory_->MakeInputGuard(), nullptr);
    EXPECT_NE(factory_->MakeSqlFormatter(), nullptr);
    EXPECT_NE(factory_->MakeDataAccess(), nullptr);
    EXPECT_NE(factory_->MakeTraceLog(), nullptr);
    EXPECT_NE(factory_->MakeGuidService(), nullptr);
    EXPECT_NE(factory_->MakeTimeService(), nullptr);
    EXPECT_NE(factory_->MakeArrayInspector(), nullptr);
    EXPECT_NE(factory_->MakeScriptLibrary(), nullptr);
    EXPECT_NE(factory_->MakeRandomSource(), nullptr);
    EXPECT_NE(factory_->MakePlatform(), nullptr);
    EXPECT_NE(factory_->MakeObjectFactory(), nullptr);
    EXPECT_NE(factory_->MakeConnectionSettings(), nullptr);
    EXPECT_NE(factory_->MakeSystemFlagReader(), nullptr);
    EXPECT_NE(factory_->MakeBatchSqlExecutor(), nullptr);
    EXPECT_NE(factory_->MakeEnvironmentInfo(), nullptr);
    EXPECT_NE(factory_->MakeKeyedCollection(), nullptr);
    EXPECT_EQ(factory_->MakeMethodObserver(), nullptr);
}

TEST_F(NativeCollaborators, AreNewForEachThreadAndPerCallObjectsForEachCall) {
    Configure("");
    EXPECT_NE(MakePlatformCollaborators(), MakePlatformCollaborators());
    EXPECT_NE(factory_->MakeObjectFactory(), factory_->MakeObjectFactory());
    EXPECT_NE(factory_->MakeConnectionSettings(), factory_->MakeConnectionSettings());
    EXPECT_NE(factory_->MakeBatchSqlExecutor(), factory_->MakeBatchSqlExecutor());
}

TEST_F(NativeCollaborators, ServeAThreadThatInstalledNoOthers) {
    Configure("");
    InstallCollaborators(nullptr);
    EXPECT_EQ(ThisThread().Formatter().FormatValue("it's"), "'it''s'");
    EXPECT_EQ(ThisThread().Objects().CreateObject("DebugTools_83.Helper")->Name(), "DebugTools_83.Helper");
    InstallCollaborators(nullptr);
}

TEST_F(NativeCollaborators, DoWithoutAConfiguration) {
    if (std::filesystem::exists("/etc/kxjob.conf")) GTEST_SKIP() << "this machine has a configuration file";
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.Path(""));
    const EnvironmentVariable none("KXJOB_CONFIG", std::nullopt);
    const EnvironmentVariable home("XDG_CONFIG_HOME", folder_.Path("xdg").string());
    const ComponentRef names =
        factory_->MakeObjectFactory()->CreateVersioned("TableNameHelper_%v.TableNameHelper");
    std::filesystem::current_path(before);
    EXPECT_EQ(names->Get("JobItem"), Value("JobItem"));
}

TEST_F(NativeCollaborators, ReadTheConfigurationOnlyWhenItIsNeeded) {
    // There is no file yet under the name that KXJOB_CONFIG gives.
    EXPECT_EQ(factory_->MakeSqlFormatter()->FormatValue(1), "1");
    EXPECT_EQ(ErrorOf([&] { factory_->MakeObjectFactory(); }).Number(), error_number::kConnectionFailed);
    Configure("component.version = 90\n");
    EXPECT_THAT(ErrorOf([&] {
                    factory_->MakeObjectFactory()->CreateVersioned("TableNameHelper_%v.TableNameHelper");
                }).Description(),
                HasSubstr("TableNameHelper_90.TableNameHelper"));
}

TEST_F(NativeCollaborators, RefuseALogLevelThatIsNone) {
    Configure("log.level = loud\n");
    EXPECT_THAT(ErrorOf([&] { factory_->MakeTraceLog(); }).Description(), HasSubstr("log.level"));
}

TEST_F(NativeCollaborators, WriteTheLogThatTheConfigurationNames) {
    Configure("log.file = " + folder_.Path("kxjob.log").string() + "\nlog.level = 3\n");
    std::int32_t level = 4;
    factory_->MakeTraceLog()->Write("left out", level, "Job_83", "JobHelper", "GetJob");
    level = 3;
    factory_->MakeTraceLog()->Write("written", level, "Job_83", "JobHelper", "GetJob");
    EXPECT_THAT(LogText(), HasSubstr(" 3 Job_83.JobHelper.GetJob written\n"));
    EXPECT_THAT(LogText(), testing::Not(HasSubstr("left out")));
}

class PendingError : public Component {
public:
    std::string Name() const override { return "ErrObject"; }
    Value Get(std::string_view property) override {
        if (property == "Number") return 7;
        return property == "Source" ? "source" : "description";
    }
};

TEST_F(NativeCollaborators, ReportErrorsInThatLogToo) {
    Configure("log.file = " + folder_.Path("kxjob.log").string() + "\n");
    const ComponentRef tools = factory_->MakePlatform()->CreateObject("DebugTools_83.Helper");
    const std::vector<Value> arguments{
        ComponentRef(std::make_shared<PendingError>()), ComponentRef(), 41, "Job_83", "JobHelper", "GetJob"};
    EXPECT_EQ(ErrorOf([&] { tools->Call("LogAndReRaiseVBError", arguments); }).Number(), 7);
    EXPECT_THAT(LogText(),
                HasSubstr(" 1 Job_83.JobHelper.GetJob Error 7 from source at line 41: description\n"));
}

TEST_F(NativeCollaborators, ShareTheConnectionsOfTheirThread) {
    Configure("");
    const TemporaryDatabase database;
    const std::shared_ptr<DataAccess> data = factory_->MakeDataAccess();
    // What one connection calls temporary no other sees.
    data->Execute(database.ConnectionString(), 5, 1,
                  "CREATE TEMP TABLE job (jobguid text, failurenote text)");
    data->Execute(database.ConnectionString(), 5, 1, "INSERT INTO job VALUES ('{A}', '')");
    const std::vector<Value> arguments{
        database.ConnectionString(), 5, "", "job", "jobguid", "{A}", "failurenote", "note"};
    factory_->MakeObjectFactory()
        ->CreateVersioned("ContentExecHelper_%v.ContentExec")
        ->Call("ContentBlobUpdate", arguments);
    EXPECT_EQ(data->Query(database.ConnectionString(), 5, 1, "SELECT failurenote FROM job", false),
              Rows({{"note"}}));
}

}  // namespace
}  // namespace kxjob

#include "defaults/components/command_component.h"

#include <gmock/gmock.h>

#include <csignal>
#include <string>
#include <vector>

#include "defaults/components/component_catalog.h"
#include "defaults/components/registry_object_factory.h"
#include "defaults/configuration/environment_variable.h"
#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

using testing::HasSubstr;
using testing_support::EnvironmentVariable;
using testing_support::ErrorOf;

Value RunItem(const std::string& commandLine, const Value& data) {
    const std::vector<Value> arguments{
        "Driver=SQLite;Database=/d", 5, "kx_", "{JOB}", "{ITEM}", "{ID}", data};
    return CreateCommandComponent("Shop_83.Import", commandLine)->Call("RunJobItem", arguments);
}

TEST(CommandComponent, HandsOverTheDataAndGivesTheOutput) {
    EXPECT_EQ(RunItem("cat", "some data\nof two lines"), Value("some data\nof two lines"));
    EXPECT_EQ(RunItem("/bin/cat", ""), Value(""));
    EXPECT_EQ(RunItem("cat", Null()), Value(""));
}

TEST(CommandComponent, LeavesOutTheLineBreaksAtTheEndOfTheOutput) {
    EXPECT_EQ(RunItem("cat", "\n done\r\n\n"), Value("\n done"));
}

TEST(CommandComponent, HandsOverTheOtherArgumentsAsVariables) {
    EXPECT_EQ(RunItem("sh -c 'echo \"$KXJOB_CONNECTION_STRING $KXJOB_PROVIDER $KXJOB_QUALIFIER $KXJOB_JOB "
                      "$KXJOB_JOB_ITEM $KXJOB_IDENTIFIER\"'",
                      ""),
              Value("Driver=SQLite;Database=/d 5 kx_ {JOB} {ITEM} {ID}"));
}

TEST(CommandComponent, KeepsTheEnvironmentButForItsVariables) {
    const EnvironmentVariable other("KXJOB_TEST_OTHER", "kept");
    const EnvironmentVariable own("KXJOB_JOB", "of the host");
    EXPECT_EQ(RunItem("sh -c 'echo \"$KXJOB_TEST_OTHER $KXJOB_JOB\"'", ""), Value("kept {JOB}"));
}

TEST(CommandComponent, HandsOverArgumentsWithoutAShell) {
    EXPECT_EQ(RunItem("printf '%s|' $HOME '*' \"a b\"", ""), Value("$HOME|*|a b|"));
}

TEST(CommandComponent, RaisesWhatAFailingProgramSays) {
    const AutomationError error =
        ErrorOf([] { RunItem("sh -c 'echo result; echo no such file >&2; exit 3'", ""); });
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(0x80004005U));
    EXPECT_EQ(error.Source(), "Shop_83.Import.RunJobItem");
    EXPECT_EQ(error.Description(), "no such file");
}

TEST(CommandComponent, SaysHowAProgramEndedThatSaysNothing) {
    EXPECT_THAT(ErrorOf([] { RunItem("sh -c 'exit 3'", ""); }).Description(),
                HasSubstr("ended with exit status 3"));
    EXPECT_THAT(ErrorOf([] { RunItem("sh -c 'kill -9 $$'", ""); }).Description(),
                HasSubstr("was ended by signal 9"));
}

TEST(CommandComponent, SucceedsWithWordsOnStandardError) {
    EXPECT_EQ(RunItem("sh -c 'echo careful >&2; echo done'", ""), Value("done"));
}

TEST(CommandComponent, CarriesMuchDataBothWays) {
    const std::string data(3'000'000, 'x');
    EXPECT_TRUE(RunItem("cat", data) == Value(data));
    EXPECT_TRUE(RunItem("sh -c 'cat | tee /dev/stderr'", data) == Value(data));
}

TEST(CommandComponent, OutlivesAProgramThatReadsNothing) {
    EXPECT_EQ(RunItem("true", std::string(3'000'000, 'x')), Value(""));
}

TEST(CommandComponent, MakesOutputStorable) {
    EXPECT_EQ(RunItem("printf 'a\\351b\\0c'", ""), Value("a\xEF\xBF\xBD"
                                                         "b\xEF\xBF\xBD"
                                                         "c"));
}

TEST(CommandComponent, StartsProgramsWithoutBlockedSignals) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const AutomationError error = ErrorOf([] { RunItem("sh -c 'kill -15 $$; exit 3'", ""); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_THAT(error.Description(), HasSubstr("was ended by signal 15"));
}

TEST(CommandComponent, RefusesArgumentsThatCannotBeVariables) {
    const std::vector<Value> arguments{"d", 5, "kx_", std::string("{J\0}", 4), "{ITEM}", "{ID}", ""};
    const ComponentRef command = CreateCommandComponent("Shop_83.Import", "cat");
    EXPECT_EQ(ErrorOf([&] { command->Call("RunJobItem", arguments); }).Number(),
              error_number::kUnstorableText);
}

TEST(CommandComponent, HasOneMemberOfSevenArguments) {
    const ComponentRef command = CreateCommandComponent("Shop_83.Import", "cat");
    EXPECT_EQ(command->Name(), "Shop_83.Import");
    EXPECT_EQ(ErrorOf([&] { command->Call("RunJobItem", {}); }).Number(), error_number::kWrongArgumentCount);
    EXPECT_EQ(ErrorOf([&] { command->Call("JobFinished", {}); }).Number(), error_number::kUnknownMember);
}

TEST(CommandComponent, IsNotRegisteredWithoutItsProgram) {
    for (const char* commandLine : {"/no/such/program", "no-such-program-anywhere", "/etc/passwd", "''"}) {
        const AutomationError error = ErrorOf([&] { CreateCommandComponent("Shop_83.Import", commandLine); });
        EXPECT_EQ(error.Number(), error_number::kClassNotRegistered) << commandLine;
        EXPECT_THAT(error.Description(), HasSubstr("Shop_83.Import"));
    }
}

TEST(CommandComponent, CountsAsCreatableWhenItsProgramIsThere) {
    RegistryObjectFactory factory(std::make_shared<ComponentCatalog>(DefaultSettings(ConfigurationDocument(
        "component.Shop_83.Import.command = cat\ncomponent.Shop_83.Export.command = /no/such/program\n"))));
    EXPECT_TRUE(factory.CanCreate("Shop_83.Import"));
    EXPECT_FALSE(factory.CanCreate("Shop_83.Export"));
}

}  // namespace
}  // namespace kxjob

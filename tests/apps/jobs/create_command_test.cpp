#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "apps/command_store.h"
#include "apps/terminal_process.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using Json = nlohmann::json;
using testing_support::CommandStore;
using testing_support::Finished;
using testing_support::StateGuid;
using testing_support::TerminalProcess;

constexpr const char* kJobGuid = "{11111111-2222-4333-8444-55555555555A}";
constexpr const char* kNullGuid = "{00000000-0000-0000-0000-000000000000}";

class CreateCommand : public ::testing::Test {
protected:
    Finished Create(std::vector<std::string> arguments, const std::string& input = {}) {
        arguments.insert(arguments.begin(), {"create", "--type", "TYPE", "--guid", kJobGuid});
        return store_.Run(arguments, input);
    }
    /// Identifier and data of each item, "identifier=data", in their order.
    std::vector<std::string> Items() {
        const Value rows =
            store_.Tables().Query("SELECT identifier, data, sequence FROM c_JobItem ORDER BY sequence");
        std::vector<std::string> items;
        for (std::int32_t row = 0; !rows.IsEmpty() && row < rows.Rows().Rows(); ++row) {
            EXPECT_EQ(rows.Rows().Cell(2, row), Value(row)) << "sequences count from 0";
            const Value& data = rows.Rows().Cell(1, row);
            items.push_back(rows.Rows().Cell(0, row).ToText() + (data.IsNull() ? "" : "=" + data.ToText()));
        }
        return items;
    }
    void ExpectNothingLeft() {
        EXPECT_EQ(store_.Cell("SELECT COUNT(*) FROM c_job"), Value(0));
        EXPECT_EQ(store_.Cell("SELECT COUNT(*) FROM c_JobItem"), Value(0));
    }

    CommandStore store_;
};

TEST_F(CreateCommand, QueuesAJobAndPrintsItsGuidAlone) {
    const Finished finished = store_.Run({"create", "--type", "TYPE", "--description", "March",
                                          "--parameters", "<parameters/>", "north", "[south,west]", "{x}"});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(finished.out, MatchesRegex("\\{[0-9A-F-]{36}\\}\n"));
    EXPECT_EQ(finished.err, "");
    EXPECT_THAT(Items(), ElementsAre("north", "[south,west]", "{x}"));
    EXPECT_EQ(store_.Cell("SELECT jobguid FROM c_job").ToText() + "\n", finished.out);
    EXPECT_EQ(store_.Cell("SELECT jobstateid FROM c_job"), Value("QUEUED"));
    EXPECT_EQ(store_.Cell("SELECT totalitemcount FROM c_job"), Value(3));
    EXPECT_EQ(store_.Cell("SELECT description FROM c_job"), Value("March"));
    EXPECT_EQ(store_.Cell("SELECT parameters FROM c_job"), Value("<parameters/>"));
    EXPECT_EQ(store_.Cell("SELECT appstateguid FROM c_job"), Value(kNullGuid)) << "there is no PRODUCTION";
}

TEST_F(CreateCommand, GoesFromReadyToQueued) {
    ASSERT_EQ(Create({"a"}).exitStatus, 0);

    const Json history = store_.Answer({"history", "--job", kJobGuid}).at("history");
    ASSERT_EQ(history.size(), 3U);
    for (const char* state : {"READY", "QUEUED"}) {
        EXPECT_THAT(history.dump(), HasSubstr(std::string("<jobstateid>") + state + "</jobstateid>"));
    }
}

TEST_F(CreateCommand, LeavesTheJobForOthersToQueue) {
    ASSERT_EQ(Create({"a", "--leave-creating"}).exitStatus, 0);

    EXPECT_EQ(store_.Cell("SELECT jobstateid FROM c_job"), Value("CREATING"));
}

TEST_F(CreateCommand, BelongsToProductionUnlessItIsToldOtherwise) {
    store_.Tables().Execute("INSERT INTO c_applicationstate (stateid, stateguid) VALUES ('PRODUCTION', '" +
                            StateGuid('1') + "')");
    store_.Tables().Execute("INSERT INTO c_applicationstate (stateid, stateguid) VALUES ('DEVELOPMENT', '" +
                            StateGuid('2') + "')");

    const auto stateOf = [&](std::vector<std::string> options) -> std::string {
        options.insert(options.begin(), {"create", "--type", "TYPE", "item"});
        return store_.Answer(options).at("applicationState");
    };
    EXPECT_EQ(stateOf({}), StateGuid('1'));
    EXPECT_EQ(stateOf({"--state", "DEVELOPMENT"}), StateGuid('2'));
    EXPECT_EQ(stateOf({"--state", "00000000-0000-4000-8000-000000000003"}), StateGuid('3'));

    const Finished unknown = Create({"item", "--state", "TESTING"});
    EXPECT_EQ(unknown.exitStatus, 1);
    EXPECT_THAT(unknown.err, HasSubstr("There is no application state TESTING"));
}

TEST_F(CreateCommand, TellsOfTheEarlierJobThatItReplaces) {
    const std::string earlier = store_.MakeJob({"a"}, StateGuid('1'));

    const Finished finished = Create({"b", "--state", StateGuid('1')});

    EXPECT_EQ(finished.out, std::string(kJobGuid) + "\n");
    EXPECT_EQ(finished.err,
              "It replaces job " + earlier + " of the same type and application state, which was QUEUED.\n");
    EXPECT_THAT(Items(), ElementsAre("b"));
}

TEST_F(CreateCommand, TakesOneIdentifierALine) {
    const Finished finished = Create({"--items", "-"},
                                     "\xEF\xBB\xBF"
                                     "it's one\r\n\n  \n{\"not\":json\nlast");

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(Items(), ElementsAre("it's one", "{\"not\":json", "last"));
}

TEST_F(CreateCommand, TakesGuidsInBracesForIdentifiers) {
    ASSERT_EQ(Create({"--items", "-"}, StateGuid('1') + "\n" + StateGuid('2') + "\n").exitStatus, 0);

    EXPECT_THAT(Items(), ElementsAre(StateGuid('1'), StateGuid('2')));
}

TEST_F(CreateCommand, TakesJsonLinesWithData) {
    const std::string file = store_.Folder().File("items");
    std::ofstream(file) << R"({"identifier":"a","data":"one\ntwo"})"
                        << "\n\n"
                        << R"({"identifier":"b"})"
                        << "\n"
                        << R"({"data":"three","identifier":"c"})";

    const Finished finished = Create({"--items", file});

    EXPECT_EQ(finished.exitStatus, 0) << finished.err;
    EXPECT_THAT(Items(), ElementsAre("a=one\ntwo", "b=", "c=three"));
}

TEST_F(CreateCommand, TakesTheFormatThatItIsTold) {
    ASSERT_EQ(Create({"--items", "-", "--format", "lines"}, R"({"identifier":"a"})").exitStatus, 0);

    EXPECT_THAT(Items(), ElementsAre(R"({"identifier":"a"})"));
}

TEST_F(CreateCommand, NamesTheLineThatIsBrokenAndCreatesNothing) {
    struct Broken {
        std::string input;
        std::string complaint;
    };
    const std::string good = R"({"identifier":"a"})"
                             "\n\n";
    for (const Broken& broken :
         {Broken{good + "{\"identifier\":", "Line 3 is no item: "},
          Broken{good + "[1]", "Line 3 is no item: it must be a JSON object."},
          Broken{good + "{}", "Line 3 is no item: it has no \"identifier\"."},
          Broken{good + R"({"identifier":7})", "Line 3 is no item: \"identifier\" must be a text."},
          Broken{good + R"({"identifier":""})", "Line 3 is no item: the identifier is empty."},
          Broken{good + R"({"identifier":"b","data":{}})", "Line 3 is no item: \"data\" must be a text."},
          Broken{good + R"({"identifier":"b","dat":"c"})", "Line 3 is no item: \"dat\" is neither"},
          Broken{good + R"({"identifier":"a\u0000b"})", "Line 3 is no item: "},
          Broken{"one\ntwo\nthree\xFF\n", "Line 3 is no item: "}}) {
        const Finished finished = Create({"--items", "-"}, broken.input);
        EXPECT_EQ(finished.exitStatus, 2) << broken.input;
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, HasSubstr(broken.complaint));
    }
    ExpectNothingLeft();
    EXPECT_EQ(store_.Cell("SELECT COUNT(*) FROM c_adminhistory"), Value(0));
}

TEST_F(CreateCommand, TakesTheParametersFromAFile) {
    const std::string file = store_.Folder().File("parameters");
    std::ofstream(file) << "<parameters>\n</parameters>\n";

    ASSERT_EQ(Create({"a", "--parameters-file", file}).exitStatus, 0);

    EXPECT_EQ(store_.Cell("SELECT parameters FROM c_job"), Value("<parameters>\n</parameters>\n"));
}

TEST_F(CreateCommand, RemovesTheHalfJobWhenAnItemFails) {
    store_.Tables().Execute(
        "CREATE TRIGGER refusal BEFORE INSERT ON c_JobItem WHEN NEW.identifier = 'bad'"
        " BEGIN SELECT RAISE(ABORT, 'no bad items here'); END");

    for (const std::string& input :
         {std::string("good\nbad\n"), std::string(R"({"identifier":"good","data":"d"})"
                                                  "\n"
                                                  R"({"identifier":"bad"})")}) {
        const Finished finished = Create({"--items", "-"}, input);
        EXPECT_EQ(finished.exitStatus, 1);
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, HasSubstr("no bad items here"));
        EXPECT_THAT(finished.err, Not(HasSubstr("half made")));
        ExpectNothingLeft();
    }
}

TEST_F(CreateCommand, SaysWhenTheHalfJobStays) {
    store_.Tables().Execute(
        "CREATE TRIGGER refusal BEFORE UPDATE ON c_job WHEN NEW.jobstateid = 'READY'"
        " BEGIN SELECT RAISE(ABORT, 'never ready'); END");
    store_.Tables().Execute(
        "CREATE TRIGGER keeper BEFORE DELETE ON c_job BEGIN SELECT RAISE(ABORT, 'kept'); END");

    const Finished finished = Create({"a"});

    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_THAT(finished.err, HasSubstr("never ready"));
    EXPECT_THAT(finished.err, HasSubstr("may be left half made; its removal failed: "));
}

TEST_F(CreateCommand, LeavesAnotherJobWithTheSameGuidAlone) {
    ASSERT_EQ(Create({"a"}).exitStatus, 0);

    const Finished again = Create({"b"});

    EXPECT_EQ(again.exitStatus, 1);
    EXPECT_THAT(again.err, HasSubstr(std::string("There is a job ") + kJobGuid + " already"));
    EXPECT_THAT(Items(), ElementsAre("a"));
}

TEST_F(CreateCommand, DrawsABarForLongInputOnATerminal) {
    const std::string file = store_.Folder().File("items");
    std::ofstream items(file);
    for (int i = 0; i < 1000; ++i) items << i << '\n';
    items.close();
    TerminalProcess terminal(store_.OnThisStore({"create", "--type", "TYPE", "--items", file}),
                             {{"KXJOB_CONFIG", "/dev/null"}});

    EXPECT_EQ(terminal.ExitStatus(), 0) << terminal.Screen();
    EXPECT_THAT(terminal.Screen(), HasSubstr("100 %  1000 of 1000 items"));
}

TEST_F(CreateCommand, RefusesWrongUsage) {
    EXPECT_EQ(store_.Run({"create", "item"}).exitStatus, 2) << "no type";
    EXPECT_THAT(Create({}).err, HasSubstr("A job needs an item"));
    EXPECT_EQ(Create({}).exitStatus, 2);
    EXPECT_EQ(Create({"--items", "-"}, "\n\n").exitStatus, 2);
    EXPECT_EQ(Create({""}).exitStatus, 2);
    EXPECT_EQ(Create({"a", "\xFF"}).exitStatus, 2);
    EXPECT_EQ(Create({"a", "--items", "-"}, "b\n").exitStatus, 2);
    EXPECT_EQ(Create({"--items", store_.Folder().File("nowhere")}).exitStatus, 2);
    EXPECT_EQ(Create({"--items", "-", "--format", "csv"}, "b\n").exitStatus, 2);
    EXPECT_EQ(Create({"a", "--description", "\xFF"}).exitStatus, 2);
    EXPECT_EQ(Create({"a", "--parameters", "x", "--parameters-file", "/dev/null"}).exitStatus, 2);
    EXPECT_EQ(store_.Run({"create", "--type", "NOBODY", "a"}).exitStatus, 1);
    ExpectNothingLeft();
}

}  // namespace
}  // namespace kxjob

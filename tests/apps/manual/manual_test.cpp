#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "apps/command_process.h"

namespace kxjob {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;
using ::testing::Not;
using testing_support::ContentOf;
using testing_support::RunCommand;
using testing_support::TemporaryFolder;

/// What a shell prints on its standard output and its standard error.
std::string OutputOf(const std::string& line) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen((line + " 2>&1").c_str(), "r"), pclose);
    if (pipe == nullptr) throw std::runtime_error("cannot run " + line);
    std::string output;
    std::array<char, 4096> piece{};
    while (const std::size_t length = std::fread(piece.data(), 1, piece.size(), pipe.get()))
        output.append(piece.data(), length);
    return output;
}

bool HasProgram(const std::string& name) {
    return !OutputOf("command -v " + name).empty();
}

class Manual : public ::testing::Test {
protected:
    std::string Printed(const std::vector<std::string>& arguments) {
        const testing_support::Finished finished = RunCommand(folder_, arguments, {});
        EXPECT_EQ(finished.exitStatus, 0) << finished.err;
        return finished.out;
    }
    std::string Write(const std::string& name, const std::string& text) {
        std::ofstream(folder_.File(name)) << text;
        return folder_.File(name);
    }

    TemporaryFolder folder_;
};

class ManPage : public Manual {};

TEST_F(ManPage, TellsOfEveryCommandAndItsOptions) {
    const std::string page = Printed({"--man"});

    EXPECT_THAT(page, AllOf(HasSubstr(".TH \"KXJOB\" 1"), HasSubstr(".SS \\fBkxjob why\\fR \\fIJOB\\fR"),
                            HasSubstr(".SS \\fBkxjob watch\\fR [\\fIJOB\\fR]"),
                            HasSubstr("\\fB\\-\\-until\\-complete\\fR"),
                            HasSubstr("\\fB\\-\\-svg\\fR \\fIFILE\\fR"), HasSubstr("GetNextJob")));
    std::istringstream help(Printed({"--help"}));
    bool isAmongCommands = false;
    int commands = 0;
    for (std::string line; std::getline(help, line);) {
        if (isAmongCommands && line.starts_with("  ") && line[2] != ' ') {
            const std::string name =
                std::regex_replace(line.substr(2, line.find(' ', 2) - 2), std::regex("-"), R"(\-)");
            EXPECT_THAT(page, HasSubstr(".SS \\fBkxjob " + name)) << "as the help says";
            ++commands;
        }
        if (line.ends_with(':')) isAmongCommands = line != "Options:";
    }
    EXPECT_GE(commands, 8) << "or the help is not read as it should be";
}

TEST_F(ManPage, IsNotOfferedInTheHelp) {
    EXPECT_THAT(Printed({"--help"}), Not(HasSubstr("--man")));
}

TEST_F(ManPage, IsWellFormed) {
    if (!HasProgram("groff")) GTEST_SKIP() << "this machine does not have groff";
    const std::string page = Write("kxjob.1", Printed({"--man"}));

    EXPECT_EQ(OutputOf("groff -man -ww -z -Tutf8 '" + page + "'"), "");
    const std::string shown = OutputOf("groff -man -Tascii -P-cbou '" + page + "'");
    EXPECT_THAT(shown, AllOf(HasSubstr("KXJOB(1)"), HasSubstr("--until-complete"), HasSubstr("EXIT STATUS"),
                             HasSubstr("./kxjob.conf")));
}

class BashCompletion : public Manual {
protected:
    /// What bash offers for the last of these words.
    std::vector<std::string> Offered(const std::vector<std::string>& words) {
        const std::string script = Write("completion", Printed({"completion", "bash"}));
        std::string line = "set -u; source '" + script + "'; COMP_WORDS=(";
        for (const std::string& word : words) line += "'" + word + "' ";
        line += "); COMP_CWORD=" + std::to_string(words.size() - 1) +
                "; _kxjob kxjob; printf \"%s\\n\" \"${COMPREPLY[@]}\"";
        std::istringstream output(OutputOf("bash " + Write("driver", line)));
        std::vector<std::string> offered;
        for (std::string word; std::getline(output, word);) {
            if (!word.empty()) offered.push_back(word);
        }
        return offered;
    }
};

TEST_F(BashCompletion, OffersCommands) {
    EXPECT_THAT(Offered({"kxjob", ""}), IsSupersetOf({"call", "completion", "demo", "doctor", "init", "stats",
                                                      "watch", "why", "--help"}));
    EXPECT_THAT(Offered({"kxjob", "w"}), IsSupersetOf({"watch", "why"}));
    EXPECT_THAT(Offered({"kxjob", "w"}), Not(Contains("stats")));
    EXPECT_THAT(Offered({"kxjob", "doc"}), ElementsAre("doctor"));
}

TEST_F(BashCompletion, OffersTheOptionsOfACommandAtEveryPlace) {
    EXPECT_THAT(Offered({"kxjob", "watch", "--un"}), ElementsAre("--until-complete"));
    EXPECT_THAT(Offered({"kxjob", "watch", "{J}", "--interval", "3", "--j"}), ElementsAre("--json"));
    EXPECT_THAT(Offered({"kxjob", "doctor", "--un"}), ElementsAre());
}

TEST_F(BashCompletion, OffersFilesAndChoicesAsValuesAndNothingElse) {
    Write("plot one.svg", "");
    EXPECT_THAT(Offered({"kxjob", "stats", "--svg", folder_.File("plot")}),
                ElementsAre(folder_.File("plot one.svg")));
    EXPECT_THAT(Offered({"kxjob", "completion", "b"}), ElementsAre("bash"));
    EXPECT_THAT(Offered({"kxjob", "doctor", "--connection", ""}), ElementsAre());
}

TEST_F(BashCompletion, OffersTheMethodsAndTheirArguments) {
    EXPECT_THAT(Offered({"kxjob", "call", "GetNext"}), ElementsAre("GetNextJob"));
    EXPECT_THAT(Offered({"kxjob", "call", "IsJobRunning", "--S"}), ElementsAre("--StateId"));
    EXPECT_THAT(Offered({"kxjob", "call", "IsJobRunning", "--StateId", ""}), ElementsAre());
}

TEST_F(BashCompletion, IsRegisteredForTheCommand) {
    const std::string script = Write("completion", Printed({"completion", "bash"}));
    EXPECT_EQ(OutputOf("bash -c \"source '" + script + "'; complete -p kxjob\""),
              "complete -F _kxjob kxjob\n");
}

TEST_F(BashCompletion, IsForBashOnly) {
    EXPECT_EQ(RunCommand(folder_, {"completion"}, {}).exitStatus, 2);
    EXPECT_EQ(RunCommand(folder_, {"completion", "fish"}, {}).exitStatus, 2);
}

}  // namespace
}  // namespace kxjob

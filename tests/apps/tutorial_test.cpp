#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "apps/command_process.h"

namespace kxjob {
namespace {

using testing_support::CommandWith;
using testing_support::ContentOf;
using testing_support::TemporaryFolder;

/// A block of commands of the page, and what it says that they print.
struct Step {
    std::string commands;
    std::string output;  // "..." stands for anything
};

std::vector<Step> StepsOf(const std::string& page) {
    std::vector<Step> steps;
    std::istringstream lines(page);
    std::string* block = nullptr;
    for (std::string line; std::getline(lines, line);) {
        if (line == "```sh") {
            block = &steps.emplace_back().commands;
        } else if (line == "```text") {
            block = &steps.back().output;
        } else if (line == "```") {
            block = nullptr;
        } else if (block != nullptr) {
            *block += line + "\n";
        }
    }
    return steps;
}

/// Whether a text is the expected one, in which "..." stands for anything.
bool IsAsExpected(const std::string& text, const std::string& expected) {
    constexpr std::string_view kAnything = "...";
    std::size_t place = 0;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + kAnything.size()) {
        end = expected.find(kAnything, begin);
        const std::string piece = expected.substr(begin, end == std::string::npos ? end : end - begin);
        if (end == std::string::npos)
            return text.size() >= place + piece.size() && text.ends_with(piece) &&
                   (begin > 0 || text == piece);
        const std::size_t found = text.find(piece, place);
        if (found == std::string::npos || (begin == 0 && found != 0)) return false;
        place = found + piece.size();
    }
    return false;
}

/// Tables end in an empty line, which a page does not show.
std::string WithoutLastBreaks(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

class Tutorial : public ::testing::Test {
protected:
    /// Runs a script in an empty folder, where the command is this one.
    std::string OutputOf(const std::string& script) {
        std::filesystem::create_directory(folder_.Path("empty"));
        std::ofstream(folder_.File("script")) << script;
        const std::string commands = std::filesystem::path(CommandWith({}).front()).parent_path().string();
        const std::string line = "cd '" + folder_.File("empty") + "' && PATH='" + commands +
                                 "':\"$PATH\" KXJOB_CONFIG= bash -eu ../script 2>&1";
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(line.c_str(), "r"), pclose);
        if (pipe == nullptr) throw std::runtime_error("cannot run " + line);
        std::string output;
        std::array<char, 4096> piece{};
        while (const std::size_t length = std::fread(piece.data(), 1, piece.size(), pipe.get()))
            output.append(piece.data(), length);
        return output;
    }

    TemporaryFolder folder_;
};

TEST(IsAsExpected, TakesThreeDotsForAnything) {
    EXPECT_TRUE(IsAsExpected("", ""));
    EXPECT_TRUE(IsAsExpected("a b c", "a ... c"));
    EXPECT_TRUE(IsAsExpected("a b c", "...c"));
    EXPECT_TRUE(IsAsExpected("a b c", "a..."));
    EXPECT_FALSE(IsAsExpected("a b c", "a ... d"));
    EXPECT_FALSE(IsAsExpected("a b c", "b...c"));
    EXPECT_FALSE(IsAsExpected("a b c", "a ... b"));
    EXPECT_FALSE(IsAsExpected("a b", "a b c"));
    EXPECT_FALSE(IsAsExpected("ab", "ab...b"));
    EXPECT_FALSE(IsAsExpected("a", ""));
}

TEST_F(Tutorial, SaysWhatItsCommandsPrint) {
    const std::vector<Step> steps = StepsOf(ContentOf(KXJOB_DOCS "/tutorial.md"));
    ASSERT_GE(steps.size(), 10U);
    const std::string endOfStep = "--- end of a step ---\n";
    std::string script;
    for (const Step& step : steps) script += step.commands + "printf '%s' '" + endOfStep + "'\n";

    const std::string output = OutputOf(script);

    std::size_t begin = 0;
    for (const Step& step : steps) {
        const std::size_t end = output.find(endOfStep, begin);
        ASSERT_NE(end, std::string::npos) << "these commands failed:\n"
                                          << step.commands << output.substr(begin);
        const std::string printed = output.substr(begin, end - begin);
        EXPECT_TRUE(IsAsExpected(WithoutLastBreaks(printed), WithoutLastBreaks(step.output)))
            << step.commands << "printed\n"
            << printed << "and not\n"
            << step.output;
        begin = end + endOfStep.size();
    }
}

}  // namespace
}  // namespace kxjob

#include "defaults/system/file_trace_log.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "defaults/store/store_test_support.h"
#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::MatchesRegex;
using testing_support::TemporaryFolder;

std::vector<std::string> Lines(const std::string& file) {
    std::ifstream in(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

void Write(FileTraceLog& log, const std::string& message, std::int32_t level) {
    log.Write(message, level, "Job_83", "JobHelper", "CreateJob");
}

/// Sends this process's standard error to a file for as long as it lives.
class StandardErrorInto {
public:
    explicit StandardErrorInto(const std::string& file) : saved_(dup(STDERR_FILENO)) {
        const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        dup2(descriptor, STDERR_FILENO);
        close(descriptor);
    }
    StandardErrorInto(const StandardErrorInto&) = delete;
    StandardErrorInto& operator=(const StandardErrorInto&) = delete;
    ~StandardErrorInto() {
        dup2(saved_, STDERR_FILENO);
        close(saved_);
    }

private:
    int saved_;
};

class FileTraceLogTest : public testing::Test {
protected:
    TemporaryFolder folder_;
    std::string file_ = folder_.Path("kxjob.log").string();
    std::string standardError_ = folder_.Path("stderr.txt").string();
};

TEST_F(FileTraceLogTest, WritesTimeLevelPlaceAndText) {
    FileTraceLog log(file_, 4);
    Write(log, "Job {J} is at READY", 3);
    EXPECT_THAT(Lines(file_), ElementsAre(MatchesRegex("[-0-9]+T[0-9:.]+Z 3 Job_83\\.JobHelper\\.CreateJob "
                                                       "Job \\{J\\} is at READY")));
}

TEST_F(FileTraceLogTest, LeavesOutWhatIsAboveItsLevel) {
    FileTraceLog log(file_, 2);
    Write(log, "progress", 4);
    Write(log, "decision", 3);
    EXPECT_FALSE(std::filesystem::exists(file_));
    Write(log, "warning", 2);
    Write(log, "error", 1);
    EXPECT_THAT(Lines(file_), ElementsAre(EndsWith(" 2 Job_83.JobHelper.CreateJob warning"),
                                          EndsWith(" 1 Job_83.JobHelper.CreateJob error")));
}

TEST_F(FileTraceLogTest, KeepsTheCallersLevelAsItIs) {
    FileTraceLog log(file_, 2);
    std::int32_t level = 4;
    log.Write("message", level, "Job_83", "JobHelper", "CreateJob");
    EXPECT_EQ(level, 4);
}

TEST_F(FileTraceLogTest, WritesAMessageWithLineBreaksAsOneLine) {
    FileTraceLog log(file_, 2);
    Write(log, std::string("a\r\nb\tc\x1B[31m\x7F\0d \\n", 17) + "\xC3\xA4", 2);
    EXPECT_THAT(Lines(file_),
                ElementsAre(EndsWith("CreateJob a\\r\\nb\\tc\\x1B[31m\\x7F\\x00d \\n\xC3\xA4")));
}

TEST_F(FileTraceLogTest, AppendsToWhatIsThere) {
    std::ofstream(file_) << "earlier\n";
    FileTraceLog log(file_, 2);
    Write(log, "later", 2);
    EXPECT_THAT(Lines(file_), ElementsAre("earlier", EndsWith(" later")));
}

TEST_F(FileTraceLogTest, StartsAnewWhenTheFileWasMovedAway) {
    FileTraceLog log(file_, 2);
    Write(log, "old", 2);
    std::filesystem::rename(file_, file_ + ".1");
    Write(log, "new", 2);
    EXPECT_THAT(Lines(file_ + ".1"), ElementsAre(EndsWith(" old")));
    EXPECT_THAT(Lines(file_), ElementsAre(EndsWith(" new")));
}

TEST_F(FileTraceLogTest, WritesToStandardErrorWithoutAFile) {
    {
        const StandardErrorInto redirection(standardError_);
        FileTraceLog log("", 2);
        Write(log, "message", 2);
    }
    EXPECT_THAT(Lines(standardError_), ElementsAre(EndsWith(" 2 Job_83.JobHelper.CreateJob message")));
}

TEST_F(FileTraceLogTest, ComplainsOnceAboutAFileThatCannotBeOpened) {
    const std::string impossible = folder_.Path("no such folder").string() + "/kxjob.log";
    {
        const StandardErrorInto redirection(standardError_);
        FileTraceLog log(impossible, 2);
        Write(log, "first", 2);
        Write(log, "second", 2);
    }
    EXPECT_THAT(Lines(standardError_),
                ElementsAre("The log file " + impossible + " cannot be written: what it misses follows here.",
                            EndsWith(" first"), EndsWith(" second")));
}

TEST_F(FileTraceLogTest, ComplainsAboutAFileThatTakesNothing) {
    {
        const StandardErrorInto redirection(standardError_);
        FileTraceLog log("/dev/full", 2);
        Write(log, "message", 2);
    }
    EXPECT_THAT(Lines(standardError_),
                ElementsAre("The log file /dev/full cannot be written: what it misses follows here.",
                            EndsWith(" message")));
}

TEST_F(FileTraceLogTest, KeepsLinesOfManyProcessesAndThreadsWhole) {
    constexpr int kProcesses = 4;
    constexpr int kLines = 100;
    const auto writeLines = [&](char writer) {
        FileTraceLog log(file_, 2);
        for (int i = 0; i < kLines; ++i) Write(log, std::string(3000, writer), 2);
    };
    std::vector<pid_t> children;
    for (int i = 0; i < kProcesses; ++i) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            writeLines(static_cast<char>('a' + i));
            _exit(0);
        }
        children.push_back(child);
    }
    std::thread first(writeLines, 'A');
    std::thread second(writeLines, 'B');
    first.join();
    second.join();
    for (const pid_t child : children) {
        int status = 1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
    std::map<std::string, int> counts;
    for (const std::string& line : Lines(file_)) ++counts[line.substr(line.rfind(' ') + 1)];
    const std::map<std::string, int> expected{{std::string(3000, 'a'), 100}, {std::string(3000, 'b'), 100},
                                              {std::string(3000, 'c'), 100}, {std::string(3000, 'd'), 100},
                                              {std::string(3000, 'A'), 100}, {std::string(3000, 'B'), 100}};
    EXPECT_EQ(counts, expected);
}

class Application : public Component {
public:
    std::string Name() const override { return "Application"; }
    Value Get(std::string_view property) override {
        if (property == "Major") return 8;
        if (property == "Minor") return 3;
        if (property == "Revision") return 1202;
        return Component::Get(property);
    }
};

TEST_F(FileTraceLogTest, ReadsTheVersionOfAnApplication) {
    FileTraceLog log("", 2);
    EXPECT_EQ(log.VersionOf(std::make_shared<Application>()), "8.3.1202.0");
}

TEST_F(FileTraceLogTest, RaisesObjectNotSetForNoApplication) {
    FileTraceLog log("", 2);
    EXPECT_EQ(testing_support::ErrorOf([&] { log.VersionOf(nullptr); }).Number(),
              error_number::kObjectNotSet);
}

}  // namespace
}  // namespace kxjob

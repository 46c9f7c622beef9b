#include "defaults/components/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <string_view>
#include <system_error>
#include <utility>

#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

[[noreturn]] void RaiseSystemError(const std::string& what, int code) {
    RaiseRuntimeError(error_number::kInternal, what + ": " + std::generic_category().message(code));
}

class FileDescriptor {
public:
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { Close(); }

    int Number() const { return number_; }
    void Close() {
        if (number_ >= 0) close(number_);
        number_ = -1;
    }

private:
    int number_;
};

/// A file in memory for a program's standard input. Unlike a pipe it takes all of `content` at once, and it
/// does not break when the program ends without reading it.
FileDescriptor MemoryFile(std::string_view content) {
    FileDescriptor file(memfd_create("kxjob", MFD_CLOEXEC));
    while (file.Number() >= 0 && !content.empty()) {
        const ssize_t count = write(file.Number(), content.data(), content.size());
        if (count >= 0) {
            content.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            break;
        }
    }
    if (!content.empty() || lseek(file.Number(), 0, SEEK_SET) != 0) {
        RaiseSystemError("No room for a program's standard input", errno);
    }
    return file;
}

/// What a program writes to one of its standard streams.
class OutputPipe {
public:
    OutputPipe() : OutputPipe(Open()) {}

    int WriteEnd() const { return writeEnd_.Number(); }
    void CloseWriteEnd() { writeEnd_.Close(); }
    int ReadEnd() const { return readEnd_.Number(); }
    const std::string& Content() const { return content_; }

    /// Takes what is there; closes the read end when no more will come.
    void Read() {
        constexpr std::size_t kPiece = 4096;
        std::array<char, kPiece> buffer{};
        const ssize_t count = read(readEnd_.Number(), buffer.data(), buffer.size());
        if (count > 0) {
            content_.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            readEnd_.Close();
        }
    }

private:
    struct Ends {
        int readEnd;
        int writeEnd;
    };
    static Ends Open() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) RaiseSystemError("No pipe for a program's output", errno);
        return {ends[0], ends[1]};
    }
    explicit OutputPipe(Ends ends) : readEnd_(ends.readEnd), writeEnd_(ends.writeEnd) {}

    FileDescriptor readEnd_;
    FileDescriptor writeEnd_;
    std::string content_;
};

/// Reads both pipes as their contents come, so that a program never waits for room in one of them.
void ReadToTheEnd(OutputPipe& first, OutputPipe& second) {
    while (first.ReadEnd() >= 0 || second.ReadEnd() >= 0) {
        // A negative descriptor is passed over.
        std::array<pollfd, 2> waited{{{first.ReadEnd(), POLLIN, 0}, {second.ReadEnd(), POLLIN, 0}}};
        if (poll(waited.data(), waited.size(), -1) < 0) continue;
        if (waited[0].revents != 0) first.Read();
        if (waited[1].revents != 0) second.Read();
    }
}

class SpawnActions {
public:
    SpawnActions() { posix_spawn_file_actions_init(&actions_); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }

    void Connect(int descriptor, int stream) {
        posix_spawn_file_actions_adddup2(&actions_, descriptor, stream);
    }
    const posix_spawn_file_actions_t* Get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

/// A program begins with no signal blocked and with the usual effect of SIGPIPE, whatever its host has
/// chosen, and in a process group of its own: an interrupt from the terminal is for the host, which lets the
/// program finish.
class SpawnAttributes {
public:
    SpawnAttributes() {
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setpgroup(&attributes_, 0);
        posix_spawnattr_setflags(&attributes_,
                                 POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }

    const posix_spawnattr_t* Get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

std::string_view NameOf(std::string_view variable) {
    return variable.substr(0, variable.find('='));
}

std::vector<std::string> EnvironmentWith(const std::vector<std::string>& variables) {
    std::vector<std::string> environment = variables;
    for (char** inherited = environ; inherited != nullptr && *inherited != nullptr; ++inherited) {
        const bool isReplaced =
            std::any_of(variables.begin(), variables.end(),
                        [&](const std::string& variable) { return NameOf(variable) == NameOf(*inherited); });
        if (!isReplaced) environment.emplace_back(*inherited);
    }
    return environment;
}

/// The form that the system takes lists of texts in; valid for as long as `texts` stays as it is.
std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// How the process ended; empty for exit status 0.
std::string WaitFor(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR) return "ended, but its exit status is not known";
    }
    if (WIFSIGNALED(status)) return "was ended by signal " + std::to_string(WTERMSIG(status));
    const int exitStatus = WEXITSTATUS(status);
    return exitStatus == 0 ? std::string() : "ended with exit status " + std::to_string(exitStatus);
}

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& words, const std::vector<std::string>& variables,
                         const std::string& input) {
    const FileDescriptor standardInput = MemoryFile(input);
    OutputPipe standardOutput;
    OutputPipe standardError;
    SpawnActions actions;
    actions.Connect(standardInput.Number(), STDIN_FILENO);
    actions.Connect(standardOutput.WriteEnd(), STDOUT_FILENO);
    actions.Connect(standardError.WriteEnd(), STDERR_FILENO);
    const SpawnAttributes attributes;
    std::vector<std::string> argumentTexts = words;
    std::vector<std::string> environmentTexts = EnvironmentWith(variables);
    const std::vector<char*> arguments = Pointers(argumentTexts);
    const std::vector<char*> environment = Pointers(environmentTexts);

    pid_t process = 0;
    const int problem = posix_spawn(&process, words.front().c_str(), actions.Get(), attributes.Get(),
                                    arguments.data(), environment.data());
    if (problem != 0) RaiseSystemError("The program " + words.front() + " cannot be started", problem);
    standardOutput.CloseWriteEnd();
    standardError.CloseWriteEnd();
    ReadToTheEnd(standardOutput, standardError);
    std::string ending = WaitFor(process);
    return {std::move(ending), standardOutput.Content(), standardError.Content()};
}

}  // namespace kxjob

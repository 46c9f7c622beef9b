#include "apps/terminal_process.h"

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <system_error>

#include "apps/command_process.h"

namespace kxjob::testing_support {
namespace {

constexpr int kPatience = 60'000;  // milliseconds without a sign of life
constexpr winsize kSize{.ws_row = 24, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
constexpr std::size_t kChunk = 4096;

std::vector<std::string> EnvironmentOfTerminal(std::map<std::string, std::string> added) {
    added.try_emplace("TERM", "xterm");
    const bool isColourWanted = added.try_emplace("NO_COLOR", "").second;
    std::vector<std::string> all = OwnEnvironmentWith(added);
    if (isColourWanted) std::erase(all, "NO_COLOR=");
    return all;
}

}  // namespace

TerminalProcess::TerminalProcess(const std::vector<std::string>& arguments,
                                 const std::map<std::string, std::string>& environment) {
    std::vector<std::string> command = CommandWith(arguments);
    std::vector<std::string> variables = EnvironmentOfTerminal(environment);
    const std::vector<char*> commandPointers = Pointers(command);
    const std::vector<char*> variablePointers = Pointers(variables);
    process_ = forkpty(&terminal_, nullptr, nullptr, &kSize);
    if (process_ < 0) throw std::system_error(errno, std::generic_category(), "forkpty");
    if (process_ == 0) {
        execve(commandPointers[0], commandPointers.data(), variablePointers.data());
        _exit(127);
    }
}

TerminalProcess::~TerminalProcess() {
    if (!isReaped_) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(terminal_);
}

/// False when the command has closed its side of the terminal.
bool TerminalProcess::ReadMore() {
    pollfd readable{.fd = terminal_, .events = POLLIN, .revents = 0};
    const int ready = poll(&readable, 1, kPatience);
    if (ready < 0) throw std::system_error(errno, std::generic_category(), "poll");
    if (ready == 0) throw std::runtime_error("nothing more within a minute after:\n" + screen_);
    std::array<char, kChunk> chunk{};
    const ssize_t count = read(terminal_, chunk.data(), chunk.size());
    if (count <= 0) return false;
    screen_.append(chunk.data(), static_cast<std::size_t>(count));
    for (std::size_t end = screen_.find("\r\n"); end != std::string::npos; end = screen_.find("\r\n")) {
        screen_.erase(end, 1);
    }
    return true;
}

void TerminalProcess::WaitFor(const std::string& text) {
    while (screen_.find(text) == std::string::npos) {
        if (!ReadMore()) throw std::runtime_error("'" + text + "' was not shown, but:\n" + screen_);
    }
}

void TerminalProcess::Type(const std::string& keys) {
    const ssize_t written = write(terminal_, keys.data(), keys.size());
    if (written != static_cast<ssize_t>(keys.size())) {
        throw std::system_error(errno, std::generic_category(), "typing");
    }
}

int TerminalProcess::ExitStatus() {
    while (ReadMore()) {
    }
    if (!isReaped_) {
        int status = 0;
        if (waitpid(process_, &status, 0) != process_) {
            throw std::system_error(errno, std::generic_category());
        }
        isReaped_ = true;
        exitStatus_ = ExitStatusOf(status);
    }
    return exitStatus_;
}

}  // namespace kxjob::testing_support

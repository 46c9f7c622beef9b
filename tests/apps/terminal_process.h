#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace kxjob::testing_support {

/// The kxjob command on a terminal of its own, 80 columns wide, and the person in front of it. Control
/// characters act as on a real one: "\x03" typed is SIGINT, "\x04" the end of the input.
class TerminalProcess {
public:
    /// `environment` is added to the test's own, but for TERM, which is xterm, and NO_COLOR, which is not
    /// there: give them to have them otherwise.
    explicit TerminalProcess(const std::vector<std::string>& arguments,
                             const std::map<std::string, std::string>& environment = {});
    TerminalProcess(const TerminalProcess&) = delete;
    TerminalProcess& operator=(const TerminalProcess&) = delete;
    /// Ends the command if it is still running.
    ~TerminalProcess();

    /// Waits until the screen has shown the text. Throws when the command ends, or a minute passes, without.
    void WaitFor(const std::string& text);
    void Type(const std::string& keys);
    /// Waits for the end of the command; gives its exit status, 128 and more for one that a signal ended.
    int ExitStatus();
    /// All that has been shown so far, the echo of what was typed included; lines end in "\n".
    const std::string& Screen() const { return screen_; }
    pid_t Process() const { return process_; }

private:
    bool ReadMore();

    pid_t process_ = -1;
    int terminal_ = -1;
    bool isReaped_ = false;
    int exitStatus_ = -1;
    std::string screen_;
};

}  // namespace kxjob::testing_support

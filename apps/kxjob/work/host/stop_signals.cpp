#include "work/host/stop_signals.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <system_error>

namespace kxjob::command {
namespace {

// What a signal handler may touch: lock-free atomics and the end of a pipe.
std::atomic<int> signalCount = 0;
std::array<int, 2> pipeEnds{-1, -1};

void OnSignal(int number) {
    if (signalCount.fetch_add(1) > 0) _exit(128 + number);
    const int before = errno;
    StopSignals::Wake();
    errno = before;
}

void Handle(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGTERM, SIGINT}) sigaction(number, &action, nullptr);
}

}  // namespace

StopSignals::StopSignals() {
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "No pipe for signals");
    }
    signalCount = 0;
    Handle(OnSignal);
}

StopSignals::~StopSignals() {
    Handle(SIG_DFL);
    for (int& end : pipeEnds) {
        close(end);
        end = -1;
    }
}

bool StopSignals::Wait(int milliseconds) {
    pollfd waited{pipeEnds[0], POLLIN, 0};
    if (poll(&waited, 1, milliseconds) > 0) {
        std::array<char, 64> drained{};
        while (read(pipeEnds[0], drained.data(), drained.size()) > 0) {
        }
    }
    return signalCount > 0;
}

void StopSignals::Wake() {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);  // a full pipe wakes as well
}

}  // namespace kxjob::command

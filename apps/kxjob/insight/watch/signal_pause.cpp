#include "insight/watch/signal_pause.h"

#include <array>
#include <cmath>
#include <ctime>

namespace kxjob::command {
namespace {

constexpr std::array kEnding{SIGINT, SIGTERM, SIGHUP};
constexpr double kNanoseconds = 1e9;

}  // namespace

SignalPause::SignalPause() {
    sigemptyset(&awaited_);
    for (const int signal : kEnding) sigaddset(&awaited_, signal);
    sigaddset(&awaited_, SIGWINCH);
    pthread_sigmask(SIG_BLOCK, &awaited_, &former_);
}

SignalPause::~SignalPause() {
    pthread_sigmask(SIG_SETMASK, &former_, nullptr);
}

int SignalPause::Wait(double seconds) {
    const double whole = std::floor(seconds);
    const timespec time{.tv_sec = static_cast<std::time_t>(whole),
                        .tv_nsec = static_cast<long>((seconds - whole) * kNanoseconds)};
    const int signal = sigtimedwait(&awaited_, nullptr, &time);
    return signal == SIGWINCH || signal < 0 ? 0 : signal;
}

void EndBySignal(int signal) {
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}  // namespace kxjob::command

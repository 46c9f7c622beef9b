#include "kxjob/duration_timer.h"

#include "frame/frame.h"

namespace kxjob {
namespace {

constexpr std::int32_t kTimerLogLevel = 4;

}  // namespace

DurationTimer::DurationTimer() {
    InFrameOf(kDurationTimerClass, "Class_Initialize", {}, [&](Frame& frame) { frame.Use(*this).Start(); });
}

DurationTimer::~DurationTimer() = default;

void DurationTimer::Start() {
    InFrameOf(kDurationTimerClass, "Start", {}, [&](Frame& frame) {
        const LateObject timer = frame.CreateVersioned("kxTimer_%v.Timer");
        timer_ = timer.Object();
        timer.Call("setModuleName", {kDurationTimerClass});
        timer.Let("logLevel", kTimerLogLevel);
        timer.Call("Start", {});
    });
}

double DurationTimer::Duration() const {
    return InFrameOf(kDurationTimerClass, "Duration", {},
                     [&](Frame& frame) { return LateObject(frame, timer_).Get("Duration").ToDouble(); });
}

}  // namespace kxjob

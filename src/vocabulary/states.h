#pragma once

namespace kxjob {

/// State identifiers, compared character for character.
namespace job_state {
inline constexpr const char* kCreating = "CREATING";
inline constexpr const char* kReady = "READY";
inline constexpr const char* kQueued = "QUEUED";
inline constexpr const char* kRunning = "RUNNING";
inline constexpr const char* kComplete = "COMPLETE";
inline constexpr const char* kCancelled = "CANCELLED";
}  // namespace job_state

namespace job_task_state {
inline constexpr const char* kRunning = "RUNNING";
inline constexpr const char* kComplete = "COMPLETE";
inline constexpr const char* kFailed = "FAILED";
}  // namespace job_task_state

}  // namespace kxjob

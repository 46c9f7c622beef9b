#pragma once

namespace kxjob::command {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;

}  // namespace kxjob::command

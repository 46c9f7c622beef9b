#pragma once

namespace kxjob::command {

/// Under which headings the help of the command lists its sub-commands; in the order in which main.cpp adds
/// the first of each.
inline constexpr const char* kSettingUp = "Setting up";
inline constexpr const char* kJobs = "Jobs";
inline constexpr const char* kExecution = "Execution";
inline constexpr const char* kUpkeep = "Upkeep";
inline constexpr const char* kPrograms = "For programs and for trying out";

}  // namespace kxjob::command

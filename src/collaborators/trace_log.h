#pragma once

#include <cstdint>
#include <string>

#include "kxjob/component.h"

namespace kxjob {

/// The levels of `TraceLog::Write` that occur.
inline constexpr std::int32_t kWarning = 2;
inline constexpr std::int32_t kDecision = 3;
inline constexpr std::int32_t kProgress = 4;

/// Diagnostics for the people who run the application.
class TraceLog {
public:
    virtual ~TraceLog() = default;
    /// One message from `project`.`className`.`method`. `level` is 2 for warnings, 3 for decisions worth
    /// noting, 4 for progress; it comes by reference because the published call passes it so.
    virtual void Write(const std::string& message, std::int32_t& level, const std::string& project,
                       const std::string& className, const std::string& method) = 0;
    /// The version text of an application object (properties Major, Minor, Revision).
    virtual std::string VersionOf(const ComponentRef& application) = 0;
};

}  // namespace kxjob

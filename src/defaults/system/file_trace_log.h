#pragma once

#include <cstdint>
#include <string>

#include "collaborators/trace_log.h"
#include "defaults/system/system_time_service.h"

namespace kxjob {

/// One line a message, "time level project.class.method text", appended whole, so that many processes may
/// write to one file. Control characters are written as escapes. Writing never raises: a message that cannot
/// go to the file goes to standard error, the first one after a sentence that says so.
class FileTraceLog : public TraceLog {
public:
    /// An empty `file` stands for standard error; messages above `highestLevel` are not written.
    FileTraceLog(std::string file, std::int32_t highestLevel);

    void Write(const std::string& message, std::int32_t& level, const std::string& project,
               const std::string& className, const std::string& method) override;
    /// "Major.Minor.Revision.0".
    std::string VersionOf(const ComponentRef& application) override;

private:
    std::string file_;
    std::int32_t highestLevel_;
    SystemTimeService times_;
    bool hasComplained_ = false;
};

}  // namespace kxjob

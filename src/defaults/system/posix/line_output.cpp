#include "defaults/system/line_output.h"

#include <fcntl.h>
#include <unistd.h>

namespace kxjob {
namespace {

/// Hands the line over in one call: what several calls wrote could get other writers' lines in between.
bool WriteWhole(int descriptor, std::string_view line) {
    return write(descriptor, line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

}  // namespace

bool AppendToFile(const std::string& file, std::string_view line) {
    constexpr mode_t kReadableToTheGroup = 0640;
    const int descriptor = open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, kReadableToTheGroup);
    if (descriptor < 0) return false;
    const bool isWritten = WriteWhole(descriptor, line);
    close(descriptor);
    return isWritten;
}

void WriteToStandardError(std::string_view line) {
    WriteWhole(STDERR_FILENO, line);
}

}  // namespace kxjob

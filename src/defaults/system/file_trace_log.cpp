#include "defaults/system/file_trace_log.h"

#include <string_view>
#include <utility>

#include "automation/runtime_error.h"
#include "defaults/system/line_output.h"
#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

std::string OneLine(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string line;
    line.reserve(text.size() + 1);
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\n') {
            line += "\\n";
        } else if (character == '\r') {
            line += "\\r";
        } else if (character == '\t') {
            line += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            line += "\\x";
            line += kDigits[byte >> 4U];
            line += kDigits[byte & 0xFU];
        } else {
            line += character;
        }
    }
    line += '\n';
    return line;
}

}  // namespace

FileTraceLog::FileTraceLog(std::string file, std::int32_t highestLevel)
    : file_(std::move(file)), highestLevel_(highestLevel) {}

void FileTraceLog::Write(const std::string& message, std::int32_t& level, const std::string& project,
                         const std::string& className, const std::string& method) {
    if (level > highestLevel_) return;
    std::string words = times_.NowISODateTime() + " " + std::to_string(level) + " ";
    words += project + "." + className + "." + method + " " + message;
    const std::string line = OneLine(words);
    // Opened for each line, so that a log that was moved away starts anew.
    if (!file_.empty() && AppendToFile(file_, line)) return;
    if (!file_.empty() && !hasComplained_) {
        hasComplained_ = true;
        WriteToStandardError(
            OneLine("The log file " + file_ + " cannot be written: what it misses follows here."));
    }
    WriteToStandardError(line);
}

std::string FileTraceLog::VersionOf(const ComponentRef& application) {
    if (application == nullptr) RaiseRuntimeError(error_number::kObjectNotSet);
    std::string version = application->Get("Major").ToText() + ".";
    version += application->Get("Minor").ToText() + ".";
    version += application->Get("Revision").ToText() + ".0";
    return version;
}

}  // namespace kxjob

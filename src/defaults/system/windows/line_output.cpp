#include "defaults/system/line_output.h"

#include <windows.h>

#include "defaults/system/windows/wide_text.h"

namespace kxjob {
namespace {

/// Hands the line over in one call: what several calls wrote could get other writers' lines in between.
bool WriteWhole(HANDLE output, std::string_view line) {
    const auto size = static_cast<DWORD>(line.size());
    DWORD written = 0;
    return WriteFile(output, line.data(), size, &written, nullptr) != 0 && written == size;
}

}  // namespace

bool AppendToFile(const std::string& file, std::string_view line) {
    // The right to append and no other to write: the system then moves to the end and writes in one step. Who
    // else has the file open may write, move or remove it.
    const HANDLE output = CreateFileW(ToWide(file).c_str(), FILE_APPEND_DATA,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (output == INVALID_HANDLE_VALUE) return false;
    const bool isWritten = WriteWhole(output, line);
    CloseHandle(output);
    return isWritten;
}

void WriteToStandardError(std::string_view line) {
    const HANDLE output = GetStdHandle(STD_ERROR_HANDLE);
    DWORD ignored = 0;
    if (GetConsoleMode(output, &ignored) == 0) {
        WriteWhole(output, line);
        return;
    }
    const std::wstring text = ToWide(line);  // a console takes bytes in its own code page only
    WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &ignored, nullptr);
}

}  // namespace kxjob

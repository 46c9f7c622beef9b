// Prints the version record of a DLL as Windows reads it: print_version FILE
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace {

void PrintFour(const char* name, DWORD high, DWORD low) {
    std::printf("%s %u.%u.%u.%u\n", name, HIWORD(high), LOWORD(high), HIWORD(low), LOWORD(low));
}

void PrintText(const std::vector<std::byte>& record, const wchar_t* name) {
    const std::wstring path = std::wstring(L"\\StringFileInfo\\040904B0\\") + name;
    void* text = nullptr;
    UINT length = 0;
    if (VerQueryValueW(record.data(), path.c_str(), &text, &length) != FALSE)
        std::printf("%ls %ls\n", name, static_cast<const wchar_t*>(text));
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        std::fputs("usage: print_version FILE\n", stderr);
        return 2;
    }
    std::vector<std::byte> record(GetFileVersionInfoSizeW(arguments[1], nullptr));
    void* found = nullptr;
    UINT length = 0;
    if (record.empty() ||
        GetFileVersionInfoW(arguments[1], 0, static_cast<DWORD>(record.size()), record.data()) == FALSE ||
        VerQueryValueW(record.data(), L"\\", &found, &length) == FALSE) {
        std::fputs("print_version: the file has no version record\n", stderr);
        return 1;
    }
    _setmode(_fileno(stdout), _O_BINARY);  // the expected text has the line ends of its repository
    const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(found);
    PrintFour("file", fixed.dwFileVersionMS, fixed.dwFileVersionLS);
    PrintFour("product", fixed.dwProductVersionMS, fixed.dwProductVersionLS);
    for (const wchar_t* name : {L"FileVersion", L"ProductVersion", L"OriginalFilename"})
        PrintText(record, name);
    return 0;
}

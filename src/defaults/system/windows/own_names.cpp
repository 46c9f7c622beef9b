#include "defaults/system/own_names.h"

#include <lmcons.h>
#include <windows.h>

#include <array>

#include "defaults/system/windows/wide_text.h"

namespace kxjob {

std::string OwnHostName() {
    // A whole name of the network's name service has at most 255 characters.
    std::array<wchar_t, 256> buffer{};
    for (const COMPUTER_NAME_FORMAT format : {ComputerNameDnsFullyQualified, ComputerNameNetBIOS}) {
        auto length = static_cast<DWORD>(buffer.size());
        if (GetComputerNameExW(format, buffer.data(), &length) != 0 && length > 0)
            return ToUtf8(std::wstring_view(buffer.data(), length));
    }
    return {};
}

std::string OwnUserName() {
    std::array<wchar_t, UNLEN + 1> buffer{};
    auto room = static_cast<DWORD>(buffer.size());
    if (GetUserNameW(buffer.data(), &room) == 0) return {};
    return ToUtf8(std::wstring_view(buffer.data()));
}

}  // namespace kxjob

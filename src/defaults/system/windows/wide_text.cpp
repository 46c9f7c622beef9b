#include "defaults/system/windows/wide_text.h"

#include "automation/utf16.h"

namespace kxjob {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "a wide character is a unit of UTF-16");

std::wstring ToWide(std::string_view text) {
    const std::u16string units = ToUtf16(text);
    return {units.begin(), units.end()};
}

std::string ToUtf8(std::wstring_view text) {
    return ToUtf8(std::u16string(text.begin(), text.end()));
}

}  // namespace kxjob

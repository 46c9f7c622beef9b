#include "com/handles/text.h"

#include <new>

namespace kxjob {

std::string TextOf(BSTR text) {
    return text == nullptr ? std::string() : ToUtf8(std::wstring_view(text, SysStringLen(text)));
}

Bstr::Bstr(std::wstring_view text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
    if (text_ == nullptr) throw std::bad_alloc();
}

}  // namespace kxjob

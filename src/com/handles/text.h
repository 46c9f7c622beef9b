#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>
#include <string_view>
#include <utility>

#include "defaults/system/windows/wide_text.h"

namespace kxjob {

/// A null BSTR is the empty text. Its length counts, not a NUL in it.
std::string TextOf(BSTR text);

/// Owns a BSTR.
class Bstr {
public:
    Bstr() = default;
    /// Takes over the caller's.
    explicit Bstr(BSTR owned) : text_(owned) {}
    /// Raises std::bad_alloc without memory.
    explicit Bstr(std::wstring_view text);
    explicit Bstr(std::string_view utf8) : Bstr(std::wstring_view(ToWide(utf8))) {}
    Bstr(const Bstr&) = delete;
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(Bstr other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }
    ~Bstr() { SysFreeString(text_); }

    BSTR Get() const { return text_; }
    /// For functions that give a BSTR out: empties this one first.
    BSTR* Receive() {
        *this = Bstr();
        return &text_;
    }
    /// Gives it to the caller, who frees it.
    BSTR Release() { return std::exchange(text_, nullptr); }

private:
    BSTR text_ = nullptr;
};

}  // namespace kxjob

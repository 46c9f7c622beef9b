#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>

#include "com/handles/text.h"

namespace kxjob {

/// A caller's text variable for a method that may change it. The change is given back when this ends, after
/// an error too: a true reference would have shown it.
class TextByReference {
public:
    explicit TextByReference(BSTR* variable)
        : variable_(variable), before_(TextOf(*variable)), text_(before_) {}
    TextByReference(const TextByReference&) = delete;
    TextByReference& operator=(const TextByReference&) = delete;
    ~TextByReference() {
        if (text_ == before_) return;
        try {
            Bstr changed(text_);
            SysFreeString(*variable_);
            *variable_ = changed.Release();
        } catch (const std::bad_alloc&) {
            // The variable keeps what it had.
        }
    }

    std::string& Text() { return text_; }

private:
    BSTR* variable_;
    std::string before_;
    std::string text_;
};

}  // namespace kxjob

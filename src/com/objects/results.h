#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>

#include "com/errors/at_boundary.h"
#include "com/handles/text.h"
#include "com/values/variant_of_value.h"
#include "kxjob/value.h"

namespace kxjob {

// What a method gives its caller, who frees it.
inline void Give(BSTR* to, const std::string& text) {
    *to = Bstr(text).Release();
}
inline void Give(VARIANT* to, const Value& value) {
    *to = VariantOf(value).Release();
}
inline void Give(VARIANT_BOOL* to, bool boolean) {
    *to = boolean ? VARIANT_TRUE : VARIANT_FALSE;
}
inline void Give(double* to, double number) {
    *to = number;
}

inline void Clear(VARIANT* result) {
    VariantInit(result);
}
template <typename T>
void Clear(T* result) {
    *result = T{};
}

/// Runs a method that gives a result: the caller's place for it is cleared first, and filled last.
template <typename Result, typename Body>
HRESULT Answer(REFIID iid, Result* result, Body&& body) noexcept {
    if (result == nullptr) return E_POINTER;
    Clear(result);
    return AtBoundary(iid, [&] { Give(result, body()); });
}

}  // namespace kxjob

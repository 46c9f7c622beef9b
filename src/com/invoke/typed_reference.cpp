#include "com/invoke/typed_reference.h"

#include <cstring>

namespace kxjob {
namespace {

/// 0 for a type that is not stored as plain bytes.
std::size_t PlainSize(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1: return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL: return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_ERROR: return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE: return 8;
        default: return 0;
    }
}

bool IsObject(VARTYPE type) {
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

VARTYPE Target(VARTYPE reference) {
    return static_cast<VARTYPE>(reference & ~VT_BYREF);
}

}  // namespace

bool CanStore(VARTYPE reference) {
    const VARTYPE type = Target(reference);
    return type == VT_BSTR || IsObject(type) || PlainSize(type) > 0;
}

void StoreBehind(const VARIANT& reference, Variant& value) {
    const VARTYPE type = Target(reference.vt);
    if (type == VT_BSTR) {
        SysFreeString(*reference.pbstrVal);
        *reference.pbstrVal = value.Release().bstrVal;
    } else if (IsObject(type)) {
        if (*reference.ppunkVal != nullptr) (*reference.ppunkVal)->Release();
        *reference.ppunkVal = value.Release().punkVal;
    } else {
        std::memcpy(reference.byref, &value->llVal, PlainSize(type));
    }
}

}  // namespace kxjob

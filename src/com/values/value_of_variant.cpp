#include "com/values/value_of_variant.h"

#include <cstdint>
#include <cstdio>
#include <limits>
#include <utility>

#include "automation/runtime_error.h"
#include "com/errors/at_boundary.h"
#include "com/handles/com_pointer.h"
#include "com/handles/text.h"
#include "com/handles/variant.h"
#include "com/late/late_component.h"
#include "com/values/value_of_safe_array.h"

namespace kxjob {
namespace {

[[noreturn]] void RaiseTypeMismatch() {
    RaiseRuntimeError(error_number::kTypeMismatch);
}

Value WholeNumber(std::int64_t number) {
    if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
    return number;
}

Value UnsignedNumber(std::uint64_t number) {
    if (std::in_range<std::int64_t>(number)) return WholeNumber(static_cast<std::int64_t>(number));
    return static_cast<double>(number);
}

Value ConvertedToDouble(const VARIANT& variant) {
    Variant number;
    RequireSuccess(VariantChangeType(&*number, const_cast<VARIANT*>(&variant), 0, VT_R8));
    return number->dblVal;
}

Value DateText(DATE date) {
    SYSTEMTIME time{};
    if (VariantTimeToSystemTime(date, &time) == FALSE) RaiseTypeMismatch();
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", time.wYear, time.wMonth,
                  time.wDay, time.wHour, time.wMinute, time.wSecond);
    return text.data();
}

Value Object(IUnknown* object) {
    if (object == nullptr) return ComponentRef();
    auto dispatch = ComPointer<IDispatch>::From(object);
    if (!dispatch) RaiseTypeMismatch();
    return ComponentOf(std::move(dispatch));
}

Value ErrorValue(SCODE code) {
    if (code == DISP_E_PARAMNOTFOUND) return {};
    RaiseTypeMismatch();
}

/// A value that is there itself, without a reference.
Value Plain(const VARIANT& variant) {
    switch (variant.vt) {
        case VT_EMPTY: return {};
        case VT_NULL: return Null{};
        case VT_BOOL: return variant.boolVal != VARIANT_FALSE;
        case VT_I1: return static_cast<std::int32_t>(static_cast<signed char>(variant.cVal));
        case VT_UI1: return static_cast<std::int32_t>(variant.bVal);
        case VT_I2: return static_cast<std::int32_t>(variant.iVal);
        case VT_UI2: return static_cast<std::int32_t>(variant.uiVal);
        case VT_I4:
        case VT_INT: return static_cast<std::int32_t>(variant.lVal);
        case VT_UI4:
        case VT_UINT: return UnsignedNumber(variant.ulVal);
        case VT_I8: return WholeNumber(variant.llVal);
        case VT_UI8: return UnsignedNumber(variant.ullVal);
        case VT_R4: return static_cast<double>(variant.fltVal);
        case VT_R8: return variant.dblVal;
        case VT_CY:
        case VT_DECIMAL: return ConvertedToDouble(variant);
        case VT_DATE: return DateText(variant.date);
        case VT_BSTR: return TextOf(variant.bstrVal);
        case VT_DISPATCH: return Object(variant.pdispVal);
        case VT_UNKNOWN: return Object(variant.punkVal);
        case VT_ERROR: return ErrorValue(variant.scode);
        default: RaiseTypeMismatch();
    }
}

}  // namespace

Value ValueOf(const VARIANT& variant) {
    const bool byReference = (variant.vt & VT_BYREF) != 0;
    if (byReference && variant.byref == nullptr) RaiseTypeMismatch();
    if (variant.vt == (VT_BYREF | VT_VARIANT)) {
        if ((variant.pvarVal->vt & ~VT_ARRAY) == (VT_BYREF | VT_VARIANT)) RaiseTypeMismatch();  // one level
        return ValueOf(*variant.pvarVal);
    }
    if ((variant.vt & VT_ARRAY) != 0) return ValueOfArray(byReference ? *variant.pparray : variant.parray);
    if (!byReference) return Plain(variant);
    Variant copy;
    RequireSuccess(VariantCopyInd(&*copy, const_cast<VARIANT*>(&variant)));
    return Plain(*copy);
}

}  // namespace kxjob

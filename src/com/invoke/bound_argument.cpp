#include "com/invoke/bound_argument.h"

#include <cstring>

#include "com/invoke/typed_reference.h"

namespace kxjob {
namespace {

constexpr VARTYPE kAnyReference = VT_BYREF | VT_VARIANT;

HRESULT Convert(VARIANT* to, const VARIANT& from, VARTYPE want, LCID locale) {
    return VariantChangeTypeEx(to, const_cast<VARIANT*>(&from), locale, VARIANT_ALPHABOOL, want);
}

/// What a variable of any type holds; the value itself for anything else.
VARIANT& Behind(VARIANT& given) {
    return given.vt == kAnyReference ? *given.pvarVal : given;
}

bool IsSound(const VARIANT& given) {
    if ((given.vt & VT_BYREF) == 0) return true;
    if (given.byref == nullptr) return false;
    if (given.vt != kAnyReference) return true;
    return given.pvarVal->vt != kAnyReference && IsSound(*given.pvarVal);
}

bool SameText(BSTR left, BSTR right) {
    return SysStringByteLen(left) == SysStringByteLen(right) &&
           (SysStringByteLen(left) == 0 || std::memcmp(left, right, SysStringByteLen(left)) == 0);
}

bool SameContent(const VARIANT& left, const VARIANT& right) {
    if (left.vt != right.vt) return false;
    if (left.vt == VT_BSTR) return SameText(left.bstrVal, right.bstrVal);
    return left.ullVal == right.ullVal;  // numbers and pointers
}

}  // namespace

HRESULT BoundArgument::Take(VARIANT& given, VARTYPE want, LCID locale) {
    if (!IsSound(given)) return DISP_E_TYPEMISMATCH;
    const bool byReference = (want & VT_BYREF) != 0;
    return byReference ? TakeByReference(given, want, locale) : TakeByValue(Behind(given), want, locale);
}

HRESULT BoundArgument::TakeByValue(const VARIANT& given, VARTYPE want, LCID locale) {
    if ((given.vt & (VT_BYREF | VT_ARRAY)) == (VT_BYREF | VT_ARRAY)) {
        passed_ = given;  // a view, not a copy of what may be large
        passed_.vt = static_cast<VARTYPE>(given.vt & ~VT_BYREF);
        passed_.parray = *given.pparray;
        return want == VT_VARIANT ? S_OK : DISP_E_TYPEMISMATCH;
    }
    if (given.vt == want || (want == VT_VARIANT && (given.vt & VT_BYREF) == 0)) {
        passed_ = given;
        return S_OK;
    }
    const HRESULT status = want == VT_VARIANT ? VariantCopyInd(&*own_, const_cast<VARIANT*>(&given))
                                              : Convert(&*own_, given, want, locale);
    passed_ = *own_;
    return status;
}

HRESULT BoundArgument::TakeByReference(VARIANT& given, VARTYPE want, LCID locale) {
    if (given.vt == want) {
        passed_ = given;
        return S_OK;
    }
    VARIANT& value = Behind(given);
    if (value.vt == want) {
        passed_ = value;
        return S_OK;
    }
    const auto type = static_cast<VARTYPE>(want & ~VT_BYREF);
    const bool isVariable = given.vt == kAnyReference || (given.vt & VT_BYREF) != 0;
    if ((value.vt & VT_BYREF) != 0 && !CanStore(value.vt)) return DISP_E_TYPEMISMATCH;
    const HRESULT status = Convert(&*own_, value, type, locale);
    if (FAILED(status)) return status;
    if (isVariable) {
        variable_ = &value;
        const HRESULT copied = VariantCopy(&*before_, &*own_);
        if (FAILED(copied)) return copied;
    }
    PassOwn(want);
    return S_OK;
}

HRESULT BoundArgument::LeaveOut(const VARIANT* declaredDefault, VARTYPE want) {
    const auto type = static_cast<VARTYPE>(want & ~VT_BYREF);
    if (declaredDefault != nullptr) {
        const HRESULT status = Convert(&*own_, *declaredDefault, type, LOCALE_INVARIANT);
        if (FAILED(status)) return status;
    } else if (type == VT_VARIANT) {
        own_->vt = VT_ERROR;
        own_->scode = DISP_E_PARAMNOTFOUND;
    } else {
        own_->vt = type;
        own_->ullVal = 0;
    }
    PassOwn(want);
    return S_OK;
}

void BoundArgument::MakeRoom(VARTYPE want) {
    const auto type = static_cast<VARTYPE>(want & ~VT_BYREF);
    if (type != VT_VARIANT) own_->vt = type;
    own_->ullVal = 0;
    PassOwn(want);
}

void BoundArgument::PassOwn(VARTYPE want) {
    if ((want & VT_BYREF) == 0) {
        passed_ = *own_;
        return;
    }
    passed_.vt = want;
    passed_.byref = want == kAnyReference ? static_cast<void*>(&*own_) : static_cast<void*>(&own_->byref);
}

HRESULT BoundArgument::GiveBack(LCID locale) {
    if (variable_ == nullptr || SameContent(*own_, *before_)) return S_OK;
    if ((variable_->vt & VT_BYREF) == 0) {
        const HRESULT cleared = VariantClear(variable_);
        if (SUCCEEDED(cleared)) *variable_ = own_.Release();
        return cleared;
    }
    Variant converted;
    const auto type = static_cast<VARTYPE>(variable_->vt & ~VT_BYREF);
    const HRESULT status = Convert(&*converted, *own_, type, locale);
    if (SUCCEEDED(status)) StoreBehind(*variable_, converted);
    return status;
}

}  // namespace kxjob

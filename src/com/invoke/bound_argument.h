#pragma once

#include <ole2.h>
#include <windows.h>

#include "com/handles/variant.h"

namespace kxjob {

/// One argument of a late-bound call, made into exactly what the method takes.
class BoundArgument {
public:
    BoundArgument() = default;
    BoundArgument(const BoundArgument&) = delete;  // what is passed points into it
    BoundArgument& operator=(const BoundArgument&) = delete;

    /// A value of the type `want` from what the caller gave. DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW and the
    /// like when it cannot be converted.
    HRESULT Take(VARIANT& given, VARTYPE want, LCID locale);
    /// The value of an argument that was left out: its declared default, else a missing VARIANT, else the
    /// type's zero.
    HRESULT LeaveOut(const VARIANT* declaredDefault, VARTYPE want);
    /// Room for the method's result.
    void MakeRoom(VARTYPE want);

    /// What the method is called with; lives as long as this.
    VARIANT* Passed() { return &passed_; }
    /// Hands a changed in/out argument back to the caller's variable, converted to its type.
    HRESULT GiveBack(LCID locale);
    /// What the method put into the room.
    VARIANT ReleaseResult() { return own_.Release(); }

private:
    void PassOwn(VARTYPE want);
    HRESULT TakeByValue(const VARIANT& given, VARTYPE want, LCID locale);
    HRESULT TakeByReference(VARIANT& given, VARTYPE want, LCID locale);

    VARIANT passed_{};
    Variant own_;
    Variant before_;               // what `own_` was before the call
    VARIANT* variable_ = nullptr;  // the caller's: a whole VARIANT, or a typed reference
};

}  // namespace kxjob

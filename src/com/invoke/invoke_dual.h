#pragma once

#include <ole2.h>
#include <windows.h>

namespace kxjob {

/// The arguments of IDispatch::Invoke.
struct LateCall {
    DISPID member;
    LCID locale;
    WORD kind;
    DISPPARAMS* parameters;
    VARIANT* result;
    EXCEPINFO* exception;
    UINT* badArgument;
};

/// Calls a member of a dual interface by its description in a type library: `self` is the interface, `vtable`
/// describes its vtable half. Arguments may be named, left out where they are optional, and of any type that
/// automation converts; a variable given for an in/out argument gets the new value even if it is of another
/// type. What the runtime's own DispInvoke does instead is refuse variables, or pass garbage for those left
/// out.
HRESULT InvokeDual(IUnknown* self, ITypeInfo& vtable, const LateCall& call);

}  // namespace kxjob

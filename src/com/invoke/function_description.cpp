#include "com/invoke/function_description.h"

#include "com/errors/at_boundary.h"
#include "com/handles/com_pointer.h"

namespace kxjob {
namespace {

/// Owns the attributes of a type.
class TypeAttributes {
public:
    explicit TypeAttributes(ITypeInfo& info) : info_(info) { RequireSuccess(info.GetTypeAttr(&attributes_)); }
    TypeAttributes(const TypeAttributes&) = delete;
    TypeAttributes& operator=(const TypeAttributes&) = delete;
    ~TypeAttributes() { info_.ReleaseTypeAttr(attributes_); }

    const TYPEATTR* operator->() const { return attributes_; }

private:
    ITypeInfo& info_;
    TYPEATTR* attributes_ = nullptr;
};

VARTYPE CalledWith(const TYPEDESC& type, ITypeInfo& info);

/// A type that a library defines. Interfaces stand behind a pointer, which is part of their VARTYPE.
VARTYPE DefinedType(HREFTYPE reference, ITypeInfo& info) {
    ComPointer<ITypeInfo> defined;
    RequireSuccess(info.GetRefTypeInfo(reference, defined.ReceiveTyped()));
    const TypeAttributes attributes(*defined.Get());
    switch (attributes->typekind) {
        case TKIND_ENUM: return VT_I4;
        case TKIND_ALIAS: return CalledWith(attributes->tdescAlias, *defined.Get());
        case TKIND_DISPATCH: return VT_DISPATCH;
        default: break;
    }
    const bool isDispatch = (attributes->wTypeFlags & TYPEFLAG_FDISPATCHABLE) != 0 ||
                            IsEqualGUID(attributes->guid, IID_IDispatch) != 0;
    return isDispatch ? VT_DISPATCH : VT_UNKNOWN;
}

VARTYPE CalledWith(const TYPEDESC& type, ITypeInfo& info) {
    if (type.vt == VT_USERDEFINED) return DefinedType(type.hreftype, info);
    if (type.vt == VT_INT) return VT_I4;
    if (type.vt != VT_PTR) return type.vt;
    const VARTYPE target = CalledWith(*type.lptdesc, info);
    const bool isInterface =
        type.lptdesc->vt == VT_USERDEFINED && (target == VT_DISPATCH || target == VT_UNKNOWN);
    return isInterface ? target : static_cast<VARTYPE>(target | VT_BYREF);
}

}  // namespace

std::optional<FunctionDescription> FunctionDescription::Find(ITypeInfo& vtable, DISPID member, WORD kind) {
    const TypeAttributes attributes(vtable);
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        RequireSuccess(vtable.GetFuncDesc(i, &function));
        FunctionDescription candidate(vtable, function);
        if (function->memid == member && (static_cast<WORD>(function->invkind) & kind) != 0) return candidate;
    }
    return std::nullopt;
}

bool FunctionDescription::Has(UINT parameter, USHORT flag) const {
    return (function_->lprgelemdescParam[parameter].paramdesc.wParamFlags & flag) != 0;
}

UINT FunctionDescription::SettableCount() const {
    const UINT count = ParameterCount();
    return count > 0 && Has(count - 1, PARAMFLAG_FRETVAL) ? count - 1 : count;
}

VARTYPE FunctionDescription::TypeOf(UINT parameter) const {
    return CalledWith(function_->lprgelemdescParam[parameter].tdesc, *info_);
}

const VARIANT* FunctionDescription::DefaultOf(UINT parameter) const {
    if (!Has(parameter, PARAMFLAG_FHASDEFAULT)) return nullptr;
    return &function_->lprgelemdescParam[parameter].paramdesc.pparamdescex->varDefaultValue;
}

}  // namespace kxjob

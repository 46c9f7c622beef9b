#pragma once

#include <ocidl.h>
#include <ole2.h>
#include <windows.h>

#include "com/errors/at_boundary.h"
#include "com/invoke/invoke_dual.h"
#include "com/server/com_object.h"
#include "com/type_library/own_type_library.h"

namespace kxjob {

/// An object of a class in the type library, with the dual interface `Interface`: early-bound callers use its
/// methods, late-bound ones come through IDispatch, which the type library drives.
template <typename Interface>
class DualObject : public ComObject<Holder::Object, Interface, ISupportErrorInfo, IProvideClassInfo> {
public:
    explicit DualObject(REFCLSID clsid) : clsid_(clsid) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 1;
        return S_OK;
    }

    STDMETHODIMP GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) override {
        if (info == nullptr) return E_POINTER;
        *info = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        return AtBoundary(Iid(), [&] { *info = TypeInfoOf(Iid()).dispatch.Release(); });
    }

    STDMETHODIMP GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                               DISPID* ids) override {
        if (names == nullptr || ids == nullptr) return E_POINTER;
        HRESULT status = S_OK;
        const HRESULT looked =
            AtBoundary(Iid(), [&] { status = TypeInfoOf(Iid()).dispatch->GetIDsOfNames(names, count, ids); });
        return FAILED(looked) ? looked : status;
    }

    STDMETHODIMP Invoke(DISPID member, REFIID /*reserved*/, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override {
        HRESULT status = S_OK;
        const HRESULT looked = AtBoundary(Iid(), [&] {
            status = InvokeDual(static_cast<Interface*>(this), *TypeInfoOf(Iid()).vtable.Get(),
                                {member, locale, flags, arguments, result, exception, badArgument});
        });
        return FAILED(looked) ? looked : status;
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override {
        return IsEqualGUID(iid, Iid()) ? S_OK : S_FALSE;
    }

    STDMETHODIMP GetClassInfo(ITypeInfo** info) override {
        if (info == nullptr) return E_POINTER;
        *info = nullptr;
        return AtBoundary(Iid(), [&] { *info = TypeInfoOfClass(clsid_).Release(); });
    }

protected:
    static REFIID Iid() { return __uuidof(Interface); }

    void* Find(REFIID iid) override {
        if (IsEqualGUID(iid, IID_IDispatch)) return static_cast<IDispatch*>(static_cast<Interface*>(this));
        return ComObject<Holder::Object, Interface, ISupportErrorInfo, IProvideClassInfo>::Find(iid);
    }

private:
    CLSID clsid_;
};

}  // namespace kxjob

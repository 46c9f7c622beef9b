#include "named_functions.h"

#include <algorithm>
#include <exception>

#include "com/handles/text.h"

namespace kxjob::script_host {
namespace {

/// The arguments in the order in which they are written, without references.
std::vector<Variant> ArgumentsOf(const DISPPARAMS& given) {
    std::vector<Variant> arguments(given.cArgs);
    for (UINT i = 0; i < given.cArgs; ++i) {
        VariantCopyInd(arguments[given.cArgs - 1 - i].Receive(), &given.rgvarg[i]);
    }
    return arguments;
}

}  // namespace

HRESULT NamedFunctions::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(IDispatch)) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<IDispatch*>(this);
    return S_OK;
}

ULONG NamedFunctions::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT NamedFunctions::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT NamedFunctions::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) {
    return E_NOTIMPL;
}

HRESULT NamedFunctions::GetIDsOfNames(REFIID /*iid*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                      DISPID* ids) {
    if (count == 0) return S_OK;
    const auto found = std::find_if(functions_.begin(), functions_.end(), [&](const NamedFunction& function) {
        return lstrcmpiW(function.name.c_str(), names[0]) == 0;
    });
    std::fill_n(ids, count, DISPID_UNKNOWN);
    if (found == functions_.end() || count > 1) return DISP_E_UNKNOWNNAME;
    ids[0] = static_cast<DISPID>(found - functions_.begin()) + 1;
    return S_OK;
}

HRESULT NamedFunctions::Invoke(DISPID id, REFIID /*iid*/, LCID /*locale*/, WORD flags, DISPPARAMS* given,
                               VARIANT* result, EXCEPINFO* exception, UINT* /*badArgument*/) {
    const auto place = static_cast<std::size_t>(id) - 1;
    if (place >= functions_.size() || (flags & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
    if (given->cArgs != functions_[place].argumentCount) return DISP_E_BADPARAMCOUNT;
    try {
        Variant answer = functions_[place].run(ArgumentsOf(*given));
        if (result != nullptr) *result = answer.Release();
        return S_OK;
    } catch (const std::exception& error) {
        if (exception == nullptr) return E_FAIL;
        *exception = {};
        exception->scode = E_FAIL;
        exception->bstrSource = Bstr(std::wstring_view(L"script_host")).Release();
        exception->bstrDescription = Bstr(std::string_view(error.what())).Release();
        return DISP_E_EXCEPTION;
    }
}

}  // namespace kxjob::script_host

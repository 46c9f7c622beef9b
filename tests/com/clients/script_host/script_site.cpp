#include <iomanip>
#include <iostream>

#include "com/handles/text.h"
#include "script_engine.h"

namespace kxjob::script_host {

DWORD_PTR ScriptSite::BeginFile(const std::wstring& name) {
    files_.push_back(name);
    return files_.size() - 1;
}

HRESULT ScriptSite::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(IActiveScriptSite)) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<IActiveScriptSite*>(this);
    return S_OK;
}

ULONG ScriptSite::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT ScriptSite::GetLCID(LCID* locale) {
    if (locale == nullptr) return E_POINTER;
    *locale = LOCALE_INVARIANT;
    return S_OK;
}

HRESULT ScriptSite::GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item, ITypeInfo** /*info*/) {
    if (std::wstring_view(name) != L"host" || wanted != SCRIPTINFO_IUNKNOWN) return TYPE_E_ELEMENTNOTFOUND;
    *item = ComPointer<IDispatch>(host_).Release();
    return S_OK;
}

HRESULT ScriptSite::GetDocVersionString(BSTR* /*version*/) {
    return E_NOTIMPL;
}

HRESULT ScriptSite::OnScriptError(IActiveScriptError* error) {
    hasFault_ = true;
    EXCEPINFO fault{};
    error->GetExceptionInfo(&fault);
    if (fault.pfnDeferredFillIn != nullptr) fault.pfnDeferredFillIn(&fault);
    const Bstr source(fault.bstrSource);
    const Bstr description(fault.bstrDescription);
    const Bstr helpFile(fault.bstrHelpFile);
    DWORD file = 0;
    ULONG line = 0;
    LONG column = 0;
    error->GetSourcePosition(&file, &line, &column);
    std::cerr << (file < files_.size() ? ToUtf8(files_[file]) : std::string("?")) << ":" << line + 1 << ": 0x"
              << std::hex << std::setw(8) << std::setfill('0') << static_cast<ULONG>(fault.scode) << std::dec
              << " " << TextOf(source.Get()) << ": " << TextOf(description.Get()) << "\n";
    return S_OK;
}

}  // namespace kxjob::script_host

#pragma once

#include <activscp.h>
#include <windows.h>

#include <string>
#include <vector>

#include "com/handles/com_pointer.h"

namespace kxjob::script_host {

/// Where a script engine asks for the named object and reports faults.
class ScriptSite : public IActiveScriptSite {
public:
    explicit ScriptSite(ComPointer<IDispatch> host) : host_(std::move(host)) {}

    /// From now on faults are of this file; returns the engine's mark for it.
    DWORD_PTR BeginFile(const std::wstring& name);
    bool HasFault() const { return hasFault_; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetLCID(LCID* locale) override;
    STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item, ITypeInfo** info) override;
    STDMETHODIMP GetDocVersionString(BSTR* version) override;
    STDMETHODIMP OnScriptTerminate(const VARIANT* /*result*/, const EXCEPINFO* /*fault*/) override {
        return S_OK;
    }
    STDMETHODIMP OnStateChange(SCRIPTSTATE /*state*/) override { return S_OK; }
    /// Writes file, line, number and text to standard error.
    STDMETHODIMP OnScriptError(IActiveScriptError* error) override;
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }

protected:
    virtual ~ScriptSite() = default;

private:
    ComPointer<IDispatch> host_;
    std::vector<std::wstring> files_;
    bool hasFault_ = false;
    ULONG references_ = 1;
};

/// One engine with one set of names: what a file defines, the files after it can use.
class ScriptEngine {
public:
    /// `language` is "vbscript" or "jscript"; scripts find the object under the name "host".
    /// Raises std::runtime_error when there is no such engine.
    ScriptEngine(const std::wstring& language, ComPointer<IDispatch> host);
    ScriptEngine(const ScriptEngine&) = delete;
    ScriptEngine& operator=(const ScriptEngine&) = delete;
    ~ScriptEngine();

    /// Runs a UTF-8 file; False after a syntax or run-time error, which has been reported.
    bool Run(const std::wstring& file);

private:
    ComPointer<ScriptSite> site_;
    ComPointer<IActiveScript> engine_;
    ComPointer<IActiveScriptParse> parser_;
};

}  // namespace kxjob::script_host

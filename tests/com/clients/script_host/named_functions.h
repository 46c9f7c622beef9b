#pragma once

#include <oaidl.h>
#include <windows.h>

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "com/handles/variant.h"

namespace kxjob::script_host {

/// One function that a script may call by name. What it throws becomes the script's error.
struct NamedFunction {
    std::wstring name;
    std::size_t argumentCount;
    std::function<Variant(std::span<const Variant> arguments)> run;
};

/// An automation object whose members are a table of functions.
class NamedFunctions : public IDispatch {
public:
    explicit NamedFunctions(std::vector<NamedFunction> functions) : functions_(std::move(functions)) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* given, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override;

protected:
    virtual ~NamedFunctions() = default;

private:
    std::vector<NamedFunction> functions_;
    ULONG references_ = 1;
};

}  // namespace kxjob::script_host

#pragma once

#include <ole2.h>
#include <windows.h>

#include <atomic>

#include "com/server/module.h"

namespace kxjob {

/// Counts references to an object that answers to `Interfaces`, the first of which is its identity. A new
/// object has one reference, its maker's.
template <Holder kind, typename First, typename... Others>
class ComObject : public First, public Others... {
public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = Find(iid);
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    virtual ~ComObject() = default;

    /// The interface with this identifier, or null.
    virtual void* Find(REFIID iid) {
        void* found = nullptr;
        if (IsEqualGUID(iid, IID_IUnknown)) found = static_cast<First*>(this);
        if (IsEqualGUID(iid, __uuidof(First))) found = static_cast<First*>(this);
        ((IsEqualGUID(iid, __uuidof(Others)) ? void(found = static_cast<Others*>(this)) : void()), ...);
        return found;
    }

private:
    Held<kind> held_;
    std::atomic<ULONG> references_ = 1;
};

}  // namespace kxjob

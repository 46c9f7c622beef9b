#pragma once

#include <ole2.h>
#include <windows.h>

#include "com/errors/at_boundary.h"
#include "com/handles/com_pointer.h"
#include "com/server/com_object.h"
#include "com/server/module.h"

namespace kxjob {

/// One `Content` for each thread that has a COM apartment: made on first use, destroyed while the apartment
/// is still alive. A thread_local object would not do: its destructor runs in the DLL's own thread-detach
/// code, where the last reference to a sibling component, or to this DLL, must not be released.
template <typename Content>
class ApartmentLocal final : public ComObject<Holder::Apartment, IInitializeSpy> {
public:
    /// The calling thread's. Raises CO_E_NOTINITIALIZED on a thread without an apartment.
    static Content& Get() {
        if (current == nullptr) Begin();
        return current->content_;
    }

    STDMETHODIMP PreInitialize(DWORD /*kind*/, DWORD /*references*/) override { return S_OK; }
    STDMETHODIMP PostInitialize(HRESULT status, DWORD /*kind*/, DWORD /*references*/) override {
        return status;
    }
    STDMETHODIMP PreUninitialize(DWORD references) override {
        if (references <= 1 && current == this) End();
        return S_OK;
    }
    STDMETHODIMP PostUninitialize(DWORD /*references*/) override { return S_OK; }

private:
    static void Begin() {
        if (!HasApartment()) RequireSuccess(CO_E_NOTINITIALIZED);
        ComPointer<ApartmentLocal> made(new ApartmentLocal);
        RequireSuccess(CoRegisterInitializeSpy(made.Get(), &made->cookie_));
        current = made.Get();  // kept alive by the registration
    }

    static bool HasApartment() {
        APTTYPE type{};
        APTTYPEQUALIFIER qualifier{};
        return SUCCEEDED(CoGetApartmentType(&type, &qualifier));
    }

    void End() {
        current = nullptr;
        content_ = Content();
        CoRevokeInitializeSpy(cookie_);
    }

    static inline thread_local ApartmentLocal* current = nullptr;

    Content content_{};
    ULARGE_INTEGER cookie_{};
};

}  // namespace kxjob

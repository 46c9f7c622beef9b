#include "com/server/class_factory.h"

#include <new>

#include "com/errors/at_boundary.h"
#include "com/handles/com_pointer.h"
#include "com/server/com_object.h"
#include "com/server/module.h"

namespace kxjob {
namespace {

class ClassFactory final : public ComObject<Holder::ClassFactory, IClassFactory> {
public:
    explicit ClassFactory(const ComClass& which) : which_(which) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        return AtBoundary(IID_IClassFactory, [&] {
            const ComPointer<IUnknown> made(which_.create(which_));
            RequireSuccess(made->QueryInterface(iid, object));
        });
    }

    STDMETHODIMP LockServer(BOOL lock) override {
        lock ? AddHolder(Holder::ServerLock) : RemoveHolder(Holder::ServerLock);
        return S_OK;
    }

private:
    const ComClass& which_;
};

}  // namespace

HRESULT MakeClassFactory(const ComClass& which, REFIID iid, void** factory) noexcept {
    const ComPointer<IClassFactory> made(new (std::nothrow) ClassFactory(which));
    return made == nullptr ? E_OUTOFMEMORY : made->QueryInterface(iid, factory);
}

}  // namespace kxjob

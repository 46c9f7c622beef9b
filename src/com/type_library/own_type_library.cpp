#include "com/type_library/own_type_library.h"

#include <map>
#include <mutex>

#include "com/errors/at_boundary.h"
#include "com/server/class_table.h"
#include "com/server/module.h"

// In the import library, but in no header of mingw-w64.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpDirectory);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID libid, WORD major, WORD minor, LCID locale,
                                                   SYSKIND platform);

namespace kxjob {
namespace {

constexpr SYSKIND kPlatform = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;

struct GuidOrder {
    bool operator()(const GUID& left, const GUID& right) const {
        return memcmp(&left, &right, sizeof(GUID)) < 0;
    }
};

/// Every thread shares it: type information belongs to no apartment.
struct Loaded {
    std::mutex mutex;
    ComPointer<ITypeLib> library;
    std::map<GUID, DualTypeInfo, GuidOrder> interfaces;
};

Loaded& TheLoaded() {
    static Loaded loaded;
    return loaded;
}

ComPointer<ITypeLib> Load() {
    ComPointer<ITypeLib> library;
    RequireSuccess(LoadTypeLibEx(OwnPath().c_str(), REGKIND_NONE, library.ReceiveTyped()));
    return library;
}

ITypeLib& Library(Loaded& loaded) {
    if (loaded.library == nullptr) loaded.library = Load();
    return *loaded.library.Get();
}

TYPEKIND KindOf(ITypeInfo& info) {
    TYPEATTR* attributes = nullptr;
    RequireSuccess(info.GetTypeAttr(&attributes));
    const TYPEKIND kind = attributes->typekind;
    info.ReleaseTypeAttr(attributes);
    return kind;
}

/// A type library lists a dual interface as its dispatch half; the vtable half hangs below that.
ComPointer<ITypeInfo> VtableHalf(const ComPointer<ITypeInfo>& listed) {
    if (KindOf(*listed.Get()) != TKIND_DISPATCH) return listed;
    constexpr UINT kOtherHalf = static_cast<UINT>(-1);
    HREFTYPE reference = 0;
    RequireSuccess(listed->GetRefTypeOfImplType(kOtherHalf, &reference));
    ComPointer<ITypeInfo> vtable;
    RequireSuccess(listed->GetRefTypeInfo(reference, vtable.ReceiveTyped()));
    return vtable;
}

}  // namespace

DualTypeInfo TypeInfoOf(REFIID dualInterface) {
    Loaded& loaded = TheLoaded();
    const std::lock_guard lock(loaded.mutex);
    const auto known = loaded.interfaces.find(dualInterface);
    if (known != loaded.interfaces.end()) return known->second;
    ComPointer<ITypeInfo> listed;
    RequireSuccess(Library(loaded).GetTypeInfoOfGuid(dualInterface, listed.ReceiveTyped()));
    return loaded.interfaces.emplace(dualInterface, DualTypeInfo{VtableHalf(listed), listed}).first->second;
}

ComPointer<ITypeInfo> TypeInfoOfClass(REFCLSID clsid) {
    Loaded& loaded = TheLoaded();
    const std::lock_guard lock(loaded.mutex);
    ComPointer<ITypeInfo> info;
    RequireSuccess(Library(loaded).GetTypeInfoOfGuid(clsid, info.ReceiveTyped()));
    return info;
}

void ReleaseTypeInfos() noexcept {
    Loaded& loaded = TheLoaded();
    loaded.interfaces.clear();
    loaded.library = ComPointer<ITypeLib>();
}

void RegisterOwnTypeLibrary(Audience audience) {
    std::wstring path = OwnPath();
    const ComPointer<ITypeLib> library = Load();
    RequireSuccess(audience == Audience::User ? RegisterTypeLibForUser(library.Get(), path.data(), nullptr)
                                              : RegisterTypeLib(library.Get(), path.data(), nullptr));
}

void UnregisterOwnTypeLibrary(Audience audience) {
    // What is not registered, or from a file that is gone, cannot be taken out: so it is put in first.
    RegisterOwnTypeLibrary(audience);
    const TypeLibraryIdentity& own = *OwnTypeLibrary();
    RequireSuccess(audience == Audience::User
                       ? UnRegisterTypeLibForUser(own.libid, own.major, own.minor, LOCALE_NEUTRAL, kPlatform)
                       : UnRegisterTypeLib(own.libid, own.major, own.minor, LOCALE_NEUTRAL, kPlatform));
}

}  // namespace kxjob

#include "com/server/registration.h"

#include <string>

#include "com/errors/at_boundary.h"
#include "com/handles/text.h"
#include "com/server/class_table.h"
#include "com/server/module.h"
#include "com/server/registry_key.h"
#include "com/type_library/own_type_library.h"

namespace kxjob {
namespace {

std::wstring GuidText(const GUID& guid) {
    constexpr int kLength = 38;  // {8-4-4-4-12}
    std::wstring text(kLength + 1, L'\0');
    StringFromGUID2(guid, text.data(), kLength + 1);
    text.resize(kLength);
    return text;
}

/// Where an audience's classes stand.
RegistryKey Classes(Audience audience) {
    return RegistryKey(audience == Audience::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE,
                       L"Software\\Classes");
}

void WriteClass(const RegistryKey& classes, const ComClass& which) {
    const std::wstring clsid = GuidText(which.clsid);
    const std::wstring description = ToWide(which.description);
    const RegistryKey progId(classes, ToWide(which.progId));
    progId.SetText(L"", description);
    RegistryKey(progId, L"CLSID").SetText(L"", clsid);

    const RegistryKey key(classes, L"CLSID\\" + clsid);
    key.SetText(L"", description);
    const RegistryKey server(key, L"InprocServer32");
    server.SetText(L"", OwnPath());
    server.SetText(L"ThreadingModel", L"Apartment");
    RegistryKey(key, L"ProgID").SetText(L"", ToWide(which.progId));
    if (const TypeLibraryIdentity* library = OwnTypeLibrary()) {
        RegistryKey(key, L"TypeLib").SetText(L"", GuidText(library->libid));
        RegistryKey(key, L"Version")
            .SetText(L"", std::to_wstring(library->major) + L"." + std::to_wstring(library->minor));
    }
}

void EraseClass(const RegistryKey& classes, const ComClass& which) {
    classes.EraseTree(ToWide(which.progId));
    classes.EraseTree(L"CLSID\\" + GuidText(which.clsid));
}

void WriteAll(Audience audience) {
    const RegistryKey classes = Classes(audience);
    for (const ComClass& which : ComClasses()) WriteClass(classes, which);
    if (OwnTypeLibrary() != nullptr) RegisterOwnTypeLibrary(audience);
}

}  // namespace

void RegisterServer(Audience audience) {
    try {
        WriteAll(audience);
    } catch (...) {
        UnregisterServer(audience);
        throw;
    }
}

void UnregisterServer(Audience audience) {
    const RegistryKey classes = Classes(audience);
    for (const ComClass& which : ComClasses()) EraseClass(classes, which);
    if (OwnTypeLibrary() != nullptr) UnregisterOwnTypeLibrary(audience);
}

}  // namespace kxjob

#include <ole2.h>
#include <windows.h>

#include <algorithm>

#include "com/errors/at_boundary.h"
#include "com/server/class_factory.h"
#include "com/server/class_table.h"
#include "com/server/module.h"
#include "com/server/registration.h"
#include "com/type_library/own_type_library.h"

namespace __gnu_cxx {
void __freeres();  // the memory that the runtime keeps for throwing without memory
}

namespace {

HRESULT Registered(bool in, kxjob::Audience audience) {
    return kxjob::AtBoundary(
        IID_IUnknown, [&] { in ? kxjob::RegisterServer(audience) : kxjob::UnregisterServer(audience); });
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* processEnds) {
    if (reason == DLL_PROCESS_ATTACH) {
        kxjob::SetOwnModule(module);
    } else if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) {
        kxjob::ReleaseTypeInfos();
        __gnu_cxx::__freeres();
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** factory) {
    if (factory == nullptr) return E_POINTER;
    *factory = nullptr;
    const auto classes = kxjob::ComClasses();
    const auto which = std::find_if(classes.begin(), classes.end(), [&](const kxjob::ComClass& candidate) {
        return IsEqualGUID(candidate.clsid, clsid) != 0;
    });
    if (which == classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
    return kxjob::MakeClassFactory(*which, iid, factory);
}

STDAPI DllCanUnloadNow() {
    return kxjob::CanUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return Registered(true, kxjob::Audience::Machine);
}

STDAPI DllUnregisterServer() {
    return Registered(false, kxjob::Audience::Machine);
}

/// regsvr32 /n /i:user registers for the current user alone; without "user", for the machine.
STDAPI DllInstall(BOOL install, const wchar_t* commandLine) {
    const bool forUser = commandLine != nullptr && lstrcmpiW(commandLine, L"user") == 0;
    return Registered(install != FALSE, forUser ? kxjob::Audience::User : kxjob::Audience::Machine);
}

#pragma once

#include <ole2.h>
#include <windows.h>

#include "com/handles/com_pointer.h"
#include "com/server/registration.h"

namespace kxjob {

/// The two faces of a dual interface in this DLL's own type library, and the class that has it.
struct DualTypeInfo {
    /// How members are laid out and called.
    ComPointer<ITypeInfo> vtable;
    /// What late-bound clients are shown.
    ComPointer<ITypeInfo> dispatch;
};

/// Loaded from the DLL's own file, whether it is registered or not, and kept until the DLL is unloaded.
/// Raises when it cannot be loaded.
DualTypeInfo TypeInfoOf(REFIID dualInterface);
ComPointer<ITypeInfo> TypeInfoOfClass(REFCLSID clsid);
/// For the DLL's entry point, when the DLL is unloaded.
void ReleaseTypeInfos() noexcept;

void RegisterOwnTypeLibrary(Audience audience);
void UnregisterOwnTypeLibrary(Audience audience);

}  // namespace kxjob

#pragma once

#include <ole2.h>
#include <windows.h>

#include <span>

namespace kxjob {

/// A class that clients can create.
struct ComClass {
    CLSID clsid;
    const char* progId;
    const char* description;
    /// A new object with one reference. Raises what its constructor raises.
    IUnknown* (*create)(const ComClass& itself);
};

/// The classes of this DLL; each DLL defines its own.
std::span<const ComClass> ComClasses();

/// The type library in this DLL's resources; null when it has none.
struct TypeLibraryIdentity {
    GUID libid;
    WORD major;
    WORD minor;
};
const TypeLibraryIdentity* OwnTypeLibrary();

}  // namespace kxjob

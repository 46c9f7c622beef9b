#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>

/// Everything that a client can bind to, one line each: the library, its types in their order, enumeration
/// members with their values, methods with dispatch number and vtable entry, parameters with direction, type
/// and default. The same text for a 32-bit and a 64-bit library.
std::string TypeLibraryText(ITypeLib& library);

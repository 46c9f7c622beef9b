#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>

/// The type of a parameter or result, as IDL writes it: BSTR, VARIANT*, DataStoreProvider, IDispatch**.
std::string TypeName(ITypeInfo& scope, const TYPEDESC& type);

/// A default value as IDL writes it: "" or 12.
std::string ValueText(const VARIANT& value);

/// The words of a type's flags (TYPEFLAGS), each with a blank before it; unknown bits as a number.
std::string TypeFlagWords(unsigned flags);

/// {8-4-4-4-12}, in capitals.
std::string GuidText(REFGUID guid);

/// The name and the help text that a type library keeps of a type (by index, -1 the library) or a member (by
/// id).
struct Documentation {
    std::string name;
    std::string help;
};
Documentation DocumentationOf(ITypeLib& library, int index);
Documentation DocumentationOf(ITypeInfo& type, MEMBERID member);

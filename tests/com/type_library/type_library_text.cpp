#include "type_library/type_library_text.h"

#include <map>
#include <vector>

#include "com/errors/at_boundary.h"
#include "com/handles/com_pointer.h"
#include "com/handles/text.h"
#include "type_library/type_names.h"

using kxjob::ComPointer;
using kxjob::RequireSuccess;

namespace {

ComPointer<ITypeInfo> ReferredType(ITypeInfo& scope, UINT index) {
    HREFTYPE reference = 0;
    RequireSuccess(scope.GetRefTypeOfImplType(index, &reference));
    ComPointer<ITypeInfo> referred;
    RequireSuccess(scope.GetRefTypeInfo(reference, referred.ReceiveTyped()));
    return referred;
}

TYPEATTR AttributesOf(ITypeInfo& type) {
    TYPEATTR* attributes = nullptr;
    RequireSuccess(type.GetTypeAttr(&attributes));
    const TYPEATTR copy = *attributes;
    type.ReleaseTypeAttr(attributes);
    return copy;
}

std::string Quoted(const std::string& help) {
    return help.empty() ? "" : " \"" + help + '"';
}

std::string EnumerationText(ITypeInfo& type, const TYPEATTR& attributes) {
    std::string text;
    for (UINT index = 0; index < attributes.cVars; ++index) {
        VARDESC* variable = nullptr;
        RequireSuccess(type.GetVarDesc(index, &variable));
        text += "    " + DocumentationOf(type, variable->memid).name + " = " +
                (variable->varkind == VAR_CONST ? ValueText(*variable->lpvarValue) : "no constant") + "\n";
        type.ReleaseVarDesc(variable);
    }
    return text;
}

const char* InvocationWord(INVOKEKIND kind) {
    static const std::map<INVOKEKIND, const char*> words = {{INVOKE_FUNC, "method"},
                                                            {INVOKE_PROPERTYGET, "get"},
                                                            {INVOKE_PROPERTYPUT, "put"},
                                                            {INVOKE_PROPERTYPUTREF, "putref"}};
    return words.at(kind);
}

std::string ParameterText(ITypeInfo& type, const ELEMDESC& parameter, const std::string& name) {
    const USHORT flags = parameter.paramdesc.wParamFlags;
    std::string text = "       ";
    if ((flags & PARAMFLAG_FIN) != 0) text += " in";
    if ((flags & PARAMFLAG_FOUT) != 0) text += " out";
    if ((flags & PARAMFLAG_FRETVAL) != 0) text += " retval";
    if ((flags & PARAMFLAG_FLCID) != 0) text += " lcid";
    if ((flags & PARAMFLAG_FOPT) != 0) text += " optional";
    text += " " + TypeName(type, parameter.tdesc) + " " + name;
    if ((flags & PARAMFLAG_FHASDEFAULT) != 0)
        text += " = " + ValueText(parameter.paramdesc.pparamdescex->varDefaultValue);
    return text + "\n";
}

/// The name of a method, then those of its parameters; a name that is not there is empty.
std::vector<std::string> NamesOf(ITypeInfo& type, const FUNCDESC& method) {
    std::vector<BSTR> found(static_cast<std::size_t>(method.cParams) + 1);
    UINT count = 0;
    RequireSuccess(type.GetNames(method.memid, found.data(), static_cast<UINT>(found.size()), &count));
    std::vector<std::string> names;
    for (BSTR name : found) names.push_back(kxjob::TextOf(kxjob::Bstr(name).Get()));
    return names;
}

std::string MethodText(ITypeInfo& type, const FUNCDESC& method) {
    const std::vector<std::string> names = NamesOf(type, method);
    std::string text = "    " + std::to_string(method.memid) + " entry " +
                       std::to_string(static_cast<std::size_t>(method.oVft) / sizeof(void*)) + " " +
                       InvocationWord(method.invkind) + " " + names.at(0) + " returns " +
                       TypeName(type, method.elemdescFunc.tdesc);
    if (method.callconv != CC_STDCALL) text += " callconv " + std::to_string(method.callconv);
    if (method.wFuncFlags != 0) text += " flags " + std::to_string(method.wFuncFlags);
    text += "\n";
    for (SHORT index = 0; index < method.cParams; ++index) {
        const std::string& name = names.at(static_cast<std::size_t>(index) + 1);
        text += ParameterText(type, method.lprgelemdescParam[index], name);
    }
    return text;
}

std::string InterfaceText(ITypeInfo& type) {
    std::string text;
    const TYPEATTR attributes = AttributesOf(type);
    for (UINT index = 0; index < attributes.cFuncs; ++index) {
        FUNCDESC* method = nullptr;
        RequireSuccess(type.GetFuncDesc(index, &method));
        text += MethodText(type, *method);
        type.ReleaseFuncDesc(method);
    }
    return text;
}

std::string BaseText(ITypeInfo& type) {
    return "    extends " + DocumentationOf(*ReferredType(type, 0).Get(), MEMBERID_NIL).name + "\n";
}

std::string ClassText(ITypeInfo& type, const TYPEATTR& attributes) {
    std::string text;
    for (UINT index = 0; index < attributes.cImplTypes; ++index) {
        INT flags = 0;
        RequireSuccess(type.GetImplTypeFlags(index, &flags));
        text += (flags & IMPLTYPEFLAG_FDEFAULT) != 0 ? "    default" : "   ";
        if ((flags & IMPLTYPEFLAG_FSOURCE) != 0) text += " source";
        if ((flags & IMPLTYPEFLAG_FRESTRICTED) != 0) text += " restricted";
        text += " interface " + DocumentationOf(*ReferredType(type, index).Get(), MEMBERID_NIL).name + "\n";
    }
    return text;
}

std::string TypeText(ITypeInfo& type) {
    const TYPEATTR attributes = AttributesOf(type);
    // A dual interface is kept as what scripts see; what compiled clients call is the other half of it.
    if (attributes.typekind == TKIND_DISPATCH && (attributes.wTypeFlags & TYPEFLAG_FDUAL) != 0)
        return TypeText(*ReferredType(type, static_cast<UINT>(-1)).Get());

    const Documentation documentation = DocumentationOf(type, MEMBERID_NIL);
    const std::string described = documentation.name + " " + GuidText(attributes.guid) +
                                  TypeFlagWords(attributes.wTypeFlags) + Quoted(documentation.help) + "\n";
    switch (attributes.typekind) {
        case TKIND_ENUM: return "\nenum " + described + EnumerationText(type, attributes);
        case TKIND_INTERFACE: return "\ninterface " + described + BaseText(type) + InterfaceText(type);
        case TKIND_DISPATCH: return "\ndispinterface " + described + InterfaceText(type);
        case TKIND_COCLASS: return "\nclass " + described + ClassText(type, attributes);
        case TKIND_ALIAS:
            return "\nalias " + described + "    of " + TypeName(type, attributes.tdescAlias) + "\n";
        default: return "\nkind " + std::to_string(attributes.typekind) + " " + described;
    }
}

}  // namespace

std::string TypeLibraryText(ITypeLib& library) {
    TLIBATTR* attributes = nullptr;
    RequireSuccess(library.GetLibAttr(&attributes));
    const Documentation documentation = DocumentationOf(library, -1);
    std::string text = "library " + documentation.name + " " + std::to_string(attributes->wMajorVerNum) +
                       "." + std::to_string(attributes->wMinorVerNum) + " " + GuidText(attributes->guid) +
                       " language " + std::to_string(attributes->lcid) + Quoted(documentation.help) + "\n";
    library.ReleaseTLibAttr(attributes);
    for (UINT index = 0; index < library.GetTypeInfoCount(); ++index) {
        ComPointer<ITypeInfo> type;
        RequireSuccess(library.GetTypeInfo(index, type.ReceiveTyped()));
        text += TypeText(*type.Get());
    }
    return text;
}

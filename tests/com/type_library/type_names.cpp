#include "type_library/type_names.h"

#include <array>
#include <map>

#include "com/errors/at_boundary.h"
#include "com/handles/com_pointer.h"
#include "com/handles/text.h"

using kxjob::RequireSuccess;
using kxjob::TextOf;

namespace {

const std::map<VARTYPE, const char*>& BasicTypes() {
    static const std::map<VARTYPE, const char*> names = {
        {VT_I2, "short"},
        {VT_I4, "long"},
        {VT_R4, "float"},
        {VT_R8, "double"},
        {VT_CY, "CURRENCY"},
        {VT_DATE, "DATE"},
        {VT_BSTR, "BSTR"},
        {VT_ERROR, "SCODE"},
        {VT_BOOL, "VARIANT_BOOL"},
        {VT_VARIANT, "VARIANT"},
        {VT_UI1, "byte"},
        {VT_I8, "int64"},
        {VT_DISPATCH, "IDispatch*"},
        {VT_UNKNOWN, "IUnknown*"},
        {VT_INT, "int"},
        {VT_UINT, "unsigned int"},
        {VT_VOID, "void"},
        {VT_HRESULT, "HRESULT"},
    };
    return names;
}

}  // namespace

Documentation DocumentationOf(ITypeLib& library, int index) {
    kxjob::Bstr name;
    kxjob::Bstr help;
    RequireSuccess(library.GetDocumentation(index, name.Receive(), help.Receive(), nullptr, nullptr));
    return {TextOf(name.Get()), TextOf(help.Get())};
}

Documentation DocumentationOf(ITypeInfo& type, MEMBERID member) {
    kxjob::Bstr name;
    kxjob::Bstr help;
    RequireSuccess(type.GetDocumentation(member, name.Receive(), help.Receive(), nullptr, nullptr));
    return {TextOf(name.Get()), TextOf(help.Get())};
}

std::string TypeName(ITypeInfo& scope, const TYPEDESC& type) {
    if (type.vt == VT_PTR) return TypeName(scope, *type.lptdesc) + "*";
    if (type.vt == VT_SAFEARRAY) return "SAFEARRAY(" + TypeName(scope, *type.lptdesc) + ")";
    if (type.vt == VT_USERDEFINED) {
        kxjob::ComPointer<ITypeInfo> named;
        RequireSuccess(scope.GetRefTypeInfo(type.hreftype, named.ReceiveTyped()));
        return DocumentationOf(*named.Get(), MEMBERID_NIL).name;
    }
    const auto found = BasicTypes().find(type.vt);
    return found != BasicTypes().end() ? found->second : "VARTYPE " + std::to_string(type.vt);
}

std::string ValueText(const VARIANT& value) {
    if (value.vt == VT_BSTR) return '"' + TextOf(value.bstrVal) + '"';
    if (value.vt == VT_I4) return std::to_string(value.lVal);
    if (value.vt == VT_BOOL) return value.boolVal != VARIANT_FALSE ? "True" : "False";
    return "a value of VARTYPE " + std::to_string(value.vt);
}

std::string TypeFlagWords(unsigned flags) {
    struct Word {
        unsigned flag;
        const char* text;
    };
    static constexpr std::array<Word, 15> kWords = {{
        {TYPEFLAG_FAPPOBJECT, "appobject"},
        {TYPEFLAG_FCANCREATE, "creatable"},
        {TYPEFLAG_FLICENSED, "licensed"},
        {TYPEFLAG_FPREDECLID, "predeclid"},
        {TYPEFLAG_FHIDDEN, "hidden"},
        {TYPEFLAG_FCONTROL, "control"},
        {TYPEFLAG_FDUAL, "dual"},
        {TYPEFLAG_FNONEXTENSIBLE, "nonextensible"},
        {TYPEFLAG_FOLEAUTOMATION, "oleautomation"},
        {TYPEFLAG_FRESTRICTED, "restricted"},
        {TYPEFLAG_FAGGREGATABLE, "aggregatable"},
        {TYPEFLAG_FREPLACEABLE, "replaceable"},
        {TYPEFLAG_FDISPATCHABLE, "dispatchable"},
        {TYPEFLAG_FREVERSEBIND, "reversebind"},
        {TYPEFLAG_FPROXY, "proxy"},
    }};
    std::string text;
    for (const auto& [flag, word] : kWords) {
        if ((flags & flag) != 0) text.append(" ").append(word);
        flags &= ~flag;
    }
    return flags == 0 ? text : text + " and flags " + std::to_string(flags);
}

std::string GuidText(REFGUID guid) {
    std::array<wchar_t, 39> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    return kxjob::ToUtf8(text.data());
}

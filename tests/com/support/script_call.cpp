#include "com/support/script_call.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kxjob::testing_support {

VARIANT Text(std::string_view text) {
    VARIANT value;
    value.vt = VT_BSTR;
    value.bstrVal = Bstr(text).Release();
    return value;
}

VARIANT Number(LONG number) {
    VARIANT value;
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

VARIANT Real(double number) {
    VARIANT value;
    value.vt = VT_R8;
    value.dblVal = number;
    return value;
}

VARIANT Boolean(bool truth) {
    VARIANT value;
    value.vt = VT_BOOL;
    value.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
    return value;
}

VARIANT Missing() {
    VARIANT value;
    value.vt = VT_ERROR;
    value.scode = DISP_E_PARAMNOTFOUND;
    return value;
}

VARIANT Reference(VARIANT& variable) {
    VARIANT value;
    value.vt = VT_BYREF | VT_VARIANT;
    value.pvarVal = &variable;
    return value;
}

Outcome CallByName(IDispatch& object, const wchar_t* member, std::vector<VARIANT> arguments,
                   std::vector<const wchar_t*> names, WORD kind) {
    Outcome outcome;
    std::vector<wchar_t*> asked{const_cast<wchar_t*>(member)};
    for (const wchar_t* name : names) asked.push_back(const_cast<wchar_t*>(name));
    std::vector<DISPID> ids(asked.size());
    outcome.status =
        object.GetIDsOfNames(IID_NULL, asked.data(), static_cast<UINT>(asked.size()), 0, ids.data());
    if (FAILED(outcome.status)) return outcome;

    // Positional arguments go last to first behind the named ones, which keep their order.
    std::rotate(arguments.begin(), arguments.end() - static_cast<std::ptrdiff_t>(names.size()),
                arguments.end());
    std::reverse(arguments.begin() + static_cast<std::ptrdiff_t>(names.size()), arguments.end());
    DISPPARAMS parameters{arguments.data(), ids.data() + 1, static_cast<UINT>(arguments.size()),
                          static_cast<UINT>(names.size())};
    EXCEPINFO exception{};
    outcome.status = object.Invoke(ids[0], IID_NULL, LOCALE_INVARIANT, kind, &parameters,
                                   outcome.result.Receive(), &exception, &outcome.badArgument);
    if (outcome.status == DISP_E_EXCEPTION) {
        outcome.number = exception.scode;
        outcome.source = TextOf(Bstr(exception.bstrSource).Get());
        outcome.description = TextOf(Bstr(exception.bstrDescription).Get());
    }
    return outcome;
}

ComPointer<IDispatch> NewObject(const wchar_t* progId) {
    CLSID clsid{};
    EXPECT_EQ(CLSIDFromProgID(progId, &clsid), S_OK);
    ComPointer<IDispatch> object;
    EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.Receive()), S_OK);
    return object;
}

}  // namespace kxjob::testing_support

// Calls the automation server's objects late-bound, as the fuzzer says, one call after the other: reads an
// input (its length in four bytes, then its bytes), makes the call, answers with a byte. An input is text:
// the object (J, T or E for JobHelper, DurationTimer and Enums), the kind of the call and the member's name,
// or its number as one character, on the first line; then one argument a line, as argument_list.h tells. The
// call comes back with a status that callers know and all that belongs to it, nothing that was given by value
// is changed, and nothing that was given is kept. usage: invoke_server FILE     the file that counts what
// runs

#include <kxJob.h>
#include <ole2.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/handles/com_pointer.h"
#include "com/handles/text.h"
#include "com/handles/variant.h"
#include "com/server/module.h"
#include "defaults/system/windows/wide_text.h"
#include "support/fuzz_input.h"
#include "windows/argument_list.h"
#include "windows/coverage_map.h"

namespace {

using kxjob::ComPointer;
using kxjob::fuzz::ArgumentList;
using kxjob::fuzz::Require;

constexpr std::array<HRESULT, 11> kRefusals = {
    DISP_E_MEMBERNOTFOUND, DISP_E_BADPARAMCOUNT,    DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW,
    DISP_E_PARAMNOTFOUND,  DISP_E_PARAMNOTOPTIONAL, DISP_E_BADVARTYPE,   DISP_E_NONAMEDARGS,
    DISP_E_ARRAYISLOCKED,  DISP_E_BADINDEX,         E_INVALIDARG};

ComPointer<IDispatch> NewObject(REFCLSID clsid) {
    ComPointer<IClassFactory> factory;
    Require(SUCCEEDED(DllGetClassObject(clsid, IID_IClassFactory, factory.Receive())),
            "there is such a class");
    ComPointer<IDispatch> object;
    Require(SUCCEEDED(factory->CreateInstance(nullptr, IID_IDispatch, object.Receive())),
            "it makes an object");
    return object;
}

IDispatch& ObjectOf(char letter) {
    static const std::map<char, ComPointer<IDispatch>> objects = {{'J', NewObject(CLSID_JobHelper)},
                                                                  {'T', NewObject(CLSID_DurationTimer)},
                                                                  {'E', NewObject(CLSID_Enums)}};
    const auto found = objects.find(letter);
    return *(found == objects.end() ? objects.at('J') : found->second).Get();
}

WORD KindOf(char letter) {
    switch (letter) {
        case 'g': return DISPATCH_PROPERTYGET;
        case 'p': return DISPATCH_PROPERTYPUT;
        case 'r': return DISPATCH_PROPERTYPUTREF;
        case 'b': return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
        default: return DISPATCH_METHOD;
    }
}

DISPID MemberOf(IDispatch& object, std::string_view name) {
    if (name.size() == 1) return name[0] - '0';
    std::wstring wide = kxjob::ToWide(name);
    wchar_t* names = wide.data();
    DISPID member = DISPID_UNKNOWN;
    const HRESULT found = object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member);
    Require(FAILED(found) == (member == DISPID_UNKNOWN), "a name has a number, or is unknown");
    return member;
}

void RequireError(const EXCEPINFO& exception) {
    Require(FAILED(exception.scode), "an error has a failing code");
    Require(SysStringLen(exception.bstrDescription) > 0, "an error is told");
    Require(SysStringLen(exception.bstrSource) > 0, "an error has a source");
}

void Call(const std::vector<std::string>& lines) {
    const std::string first = lines[0] + std::string(2, ' ');
    IDispatch& object = ObjectOf(first[0]);
    const DISPID member =
        MemberOf(object, std::string_view(lines[0]).substr(std::min<std::size_t>(2, lines[0].size())));
    ArgumentList arguments{std::span<const std::string>(lines).subspan(1)};
    DISPPARAMS parameters = arguments.Parameters();
    kxjob::Variant result;
    EXCEPINFO exception{};
    constexpr UINT kNone = UINT_MAX;
    UINT bad = kNone;
    const HRESULT status = object.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, KindOf(first[1]), &parameters,
                                         &*result, &exception, &bad);
    const kxjob::Bstr source(exception.bstrSource);
    const kxjob::Bstr description(exception.bstrDescription);
    const kxjob::Bstr helpFile(exception.bstrHelpFile);
    if (status == DISP_E_EXCEPTION) {
        RequireError(exception);
    } else {
        const bool isRefusal = std::find(kRefusals.begin(), kRefusals.end(), status) != kRefusals.end();
        Require(status == S_OK || isRefusal, "a status is one that callers know: " + std::to_string(status));
        Require(exception.bstrDescription == nullptr, "no error is told when there was none");
    }
    if (FAILED(status)) Require(result->vt == VT_EMPTY, "a failed call has no result");
    Require(bad == kNone || bad < parameters.cArgs, "the bad argument is one of them");
    arguments.RequireUntouched();
}

/// False at the end of the input.
bool Read(void* place, std::size_t size) {
    auto* next = static_cast<std::uint8_t*>(place);
    while (size > 0) {
        DWORD count = 0;
        const bool isThere =
            ReadFile(GetStdHandle(STD_INPUT_HANDLE), next, static_cast<DWORD>(size), &count, nullptr) != 0;
        if (!isThere || count == 0) return false;
        next += count;
        size -= count;
    }
    return true;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    Require(count == 2, "usage: invoke_server FILE");
    OleInitialize(nullptr);
    kxjob::SetOwnModule(GetModuleHandleW(nullptr));
    kxjob::fuzz::ShareCoverage(arguments[1]);
    std::uint32_t size = 0;
    std::vector<std::uint8_t> input;
    while (Read(&size, sizeof size)) {
        input.resize(size);
        if (!Read(input.data(), size)) return 1;
        Call(kxjob::fuzz::Lines(input.data(), input.size()));
        DWORD written = 0;
        WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), "+", 1, &written, nullptr);
    }
    return 0;
}

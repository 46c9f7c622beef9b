#include "windows/bound_calls.h"

#include <array>
#include <stdexcept>
#include <vector>

#include "com/handles/text.h"
#include "com/handles/variant.h"

namespace kxjob::bench {
namespace {

constexpr const char* kTask = "{00000000-0000-4000-8000-00000000C001}";
constexpr const char* kLock = "{00000000-0000-4000-8000-00000000D001}";

void Require(HRESULT status) {
    if (FAILED(status)) throw std::runtime_error("the server refuses the call: " + std::to_string(status));
}

/// Texts become BSTRs for the call, in their order; an argument list runs from the last to the first.
void CallLate(IDispatch& object, const wchar_t* member, const std::vector<std::string>& texts) {
    std::vector<Bstr> owners;
    std::vector<VARIANT> arguments(texts.size());
    for (const std::string& text : texts) owners.emplace_back(std::string_view(text));
    for (std::size_t i = 0; i < texts.size(); ++i) {
        VARIANT& argument = arguments[texts.size() - 1 - i];
        argument.vt = VT_BSTR;
        argument.bstrVal = owners[i].Get();
    }
    std::wstring name = member;
    LPOLESTR asked = name.data();
    DISPID id = 0;
    Require(object.GetIDsOfNames(IID_NULL, &asked, 1, LOCALE_INVARIANT, &id));
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    Variant result;
    Require(object.Invoke(id, IID_NULL, LOCALE_INVARIANT, DISPATCH_METHOD, &parameters, result.Receive(),
                          nullptr, nullptr));
}

}  // namespace

ServerObject::ServerObject() {
    CLSID clsid{};
    Require(CLSIDFromProgID(L"Job_83.JobHelper", &clsid));
    Require(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, late_.Receive()));
    early_ = ComPointer<_JobHelper>::From(late_.Get());
}

BoundCall IsJobCompleteCall(JobHelper& helper, const ServerObject& server) {
    const std::string state = "COMPLETE";
    return {"IsJobComplete", [&helper, state] { helper.IsJobComplete(state); },
            [&server, state] {
                VARIANT_BOOL complete = VARIANT_FALSE;
                Require(server.Early().IsJobComplete(Bstr(std::string_view(state)).Get(), &complete));
            },
            [&server, state] { CallLate(server.Late(), L"IsJobComplete", {state}); }};
}

BoundCall UpdateJobTaskLockCall(JobHelper& helper, const ServerObject& server, const std::string& connection,
                                const std::string& qualifier) {
    return {"UpdateJobTaskLock",
            [=, &helper] { helper.UpdateJobTaskLock(connection, qualifier, kTask, kLock); },
            [=, &server] {
                Require(server.Early().UpdateJobTaskLock(
                    Bstr(std::string_view(connection)).Get(), Bstr(std::string_view(qualifier)).Get(),
                    Bstr(std::string_view(kTask)).Get(), Bstr(std::string_view(kLock)).Get()));
            },
            [=, &server] {
                CallLate(server.Late(), L"UpdateJobTaskLock", {connection, qualifier, kTask, kLock});
            }};
}

}  // namespace kxjob::bench

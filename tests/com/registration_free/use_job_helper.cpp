// Creates the job component by its ProgID and calls it, early bound and by name. Prints what it answers.
// usage: use_job_helper [elsewhere]   with it the component lives in another apartment, and each call goes
// there assemblies.
#include <windows.h>

#include <cstdio>
#include <cstring>

#include "kxJob.h"

namespace {

/// COM for this thread, as long as it lives.
class Apartment {
public:
    explicit Apartment(COINIT kind) : status_(CoInitializeEx(nullptr, static_cast<DWORD>(kind))) {}
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() {
        if (SUCCEEDED(status_)) CoUninitialize();
    }

private:
    HRESULT status_;
};

bool Succeeded(const char* what, HRESULT status) {
    if (FAILED(status)) std::printf("%s 0x%08lX\n", what, static_cast<unsigned long>(status));
    return SUCCEEDED(status);
}

bool PrintVersion(_JobHelper& helper) {
    BSTR version = nullptr;
    if (!Succeeded("Version", helper.Version(&version))) return false;
    std::printf("Version %ls\n", version);
    SysFreeString(version);
    return true;
}

/// By name, which needs the type library.
bool PrintIsJobComplete(_JobHelper& helper, const wchar_t* state) {
    wchar_t memberName[] = L"IsJobComplete";
    wchar_t* names[] = {memberName};
    DISPID member = DISPID_UNKNOWN;
    if (!Succeeded("GetIDsOfNames", helper.GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &member)))
        return false;
    VARIANTARG argument{};
    argument.vt = VT_BSTR;
    argument.bstrVal = SysAllocString(state);
    DISPPARAMS arguments = {&argument, nullptr, 1, 0};
    VARIANT result{};
    const HRESULT status = helper.Invoke(member, IID_NULL, LOCALE_NEUTRAL, DISPATCH_METHOD, &arguments,
                                         &result, nullptr, nullptr);
    SysFreeString(argument.bstrVal);
    if (!Succeeded("Invoke", status)) return false;
    std::printf("IsJobComplete(%ls) %d\n", state, result.boolVal);
    return true;
}

/// Gets as far as opening the store, for which it needs a stand-in of the siblings. Prints the number of its
/// error.
void PrintErrorOfGetJobType(_JobHelper& helper) {
    BSTR connection = SysAllocString(L"Driver={No such driver}");
    BSTR qualifier = SysAllocString(L"app_");
    VARIANT rows{};
    const HRESULT status = helper.GetJobType(connection, dspSqlServer, qualifier, nullptr, &rows);
    std::printf("GetJobType 0x%08lX\n", static_cast<unsigned long>(status));
    VariantClear(&rows);
    SysFreeString(qualifier);
    SysFreeString(connection);
}

bool UseJobHelper() {
    CLSID clsid{};
    if (!Succeeded("CLSIDFromProgID", CLSIDFromProgID(L"Job_83.JobHelper", &clsid))) return false;
    void* created = nullptr;
    if (!Succeeded("CoCreateInstance",
                   CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(_JobHelper), &created)))
        return false;
    auto& helper = *static_cast<_JobHelper*>(created);
    const bool good = PrintVersion(helper) && PrintIsJobComplete(helper, L"COMPLETE") &&
                      PrintIsJobComplete(helper, L"RUNNING");
    if (good) PrintErrorOfGetJobType(helper);
    helper.Release();
    return good;
}

}  // namespace

int main(int count, char** arguments) {
    // The component is made for apartments of one thread: without one it gets one of the system's.
    const bool elsewhere = count == 2 && std::strcmp(arguments[1], "elsewhere") == 0;
    const Apartment apartment(elsewhere ? COINIT_MULTITHREADED : COINIT_APARTMENTTHREADED);
    return UseJobHelper() ? 0 : 1;
}

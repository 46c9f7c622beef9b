// Registers a DLL while the registry refuses to write below one key of its classes, and prints what is
// reported: refused_registration DLL KEY. The key is volatile for the time: no lasting key can be made below
// such a one.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

class VolatileKey {
public:
    explicit VolatileKey(const std::wstring& path) : path_(path) {
        DWORD disposition = 0;
        created_ = RegCreateKeyExW(HKEY_LOCAL_MACHINE, path_.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                                   KEY_READ, nullptr, &key_, &disposition) == ERROR_SUCCESS &&
                   disposition == REG_CREATED_NEW_KEY;
    }
    VolatileKey(const VolatileKey&) = delete;
    VolatileKey& operator=(const VolatileKey&) = delete;
    ~VolatileKey() {
        RegCloseKey(key_);
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, path_.c_str());
    }
    bool Created() const { return created_; }

private:
    std::wstring path_;
    HKEY key_ = nullptr;
    bool created_ = false;
};

HRESULT Register(const wchar_t* dll) {
    const HMODULE module = LoadLibraryW(dll);
    if (module == nullptr) return HRESULT_FROM_WIN32(GetLastError());
    const auto entry = reinterpret_cast<HRESULT(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(module, "DllRegisterServer")));
    const HRESULT status = entry != nullptr ? entry() : E_NOTIMPL;
    FreeLibrary(module);
    return status;
}

DWORD RunRegsvr32(const std::wstring& dll) {
    std::wstring command = L"regsvr32 /s \"" + dll + L'"';
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == FALSE)
        return GetLastError();
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3) {
        std::fputs("usage: refused_registration DLL KEY\n", stderr);
        return 2;
    }
    const std::wstring path = std::wstring(L"Software\\Classes\\") + arguments[2];
    HRESULT status = S_OK;
    DWORD regsvr32 = 0;
    {
        const VolatileKey key(path);
        if (!key.Created()) {
            std::fputs("refused_registration: the key is there already\n", stderr);
            return 1;
        }
        status = Register(arguments[1]);
    }
    {
        const VolatileKey key(path);
        regsvr32 = RunRegsvr32(arguments[1]);
    }
    std::printf("DllRegisterServer 0x%08lX\nregsvr32 %lu\n", static_cast<unsigned long>(status), regsvr32);
    return 0;
}

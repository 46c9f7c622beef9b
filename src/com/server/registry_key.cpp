#include "com/server/registry_key.h"

#include "com/errors/at_boundary.h"

namespace kxjob {
namespace {

void RequireDone(LSTATUS status) {
    RequireSuccess(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

}  // namespace

RegistryKey::RegistryKey(HKEY parent, const std::wstring& path) {
    RequireDone(RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE | DELETE, nullptr,
                                &key_, nullptr));
}

void RegistryKey::SetText(const wchar_t* name, const std::wstring& text) const {
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    RequireDone(RegSetValueExW(key_, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes));
}

void RegistryKey::EraseTree(const std::wstring& path) const {
    const LSTATUS status = RegDeleteTreeW(key_, path.c_str());
    if (status != ERROR_FILE_NOT_FOUND) RequireDone(status);
}

}  // namespace kxjob

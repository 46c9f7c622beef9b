#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>

namespace kxjob {

/// An open registry key; making one creates the key where it is missing. Raises what the system refuses.
class RegistryKey {
public:
    RegistryKey(HKEY parent, const std::wstring& path);
    RegistryKey(const RegistryKey& parent, const std::wstring& path) : RegistryKey(parent.key_, path) {}
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey() { RegCloseKey(key_); }

    /// An empty name is the key's default value.
    void SetText(const wchar_t* name, const std::wstring& text) const;
    /// Removes a key below this one with all in it. A missing one is no error.
    void EraseTree(const std::wstring& path) const;

private:
    HKEY key_ = nullptr;
};

}  // namespace kxjob

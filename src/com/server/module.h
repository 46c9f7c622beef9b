#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>

namespace kxjob {

/// What keeps this DLL loaded. Each is counted for itself, so that a test can ask about objects alone.
enum class Holder { Object, ClassFactory, Apartment, ServerLock };

void AddHolder(Holder holder) noexcept;
void RemoveHolder(Holder holder) noexcept;
/// True when nothing holds the DLL.
bool CanUnload() noexcept;

/// Counts its owner for as long as it lives.
template <Holder kind>
class Held {
public:
    Held() noexcept { AddHolder(kind); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { RemoveHolder(kind); }
};

/// The module of this DLL, and the path of its file.
HMODULE OwnModule() noexcept;
std::wstring OwnPath();

/// For the entry point only.
void SetOwnModule(HMODULE module) noexcept;

}  // namespace kxjob

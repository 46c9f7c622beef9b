#include "com/server/module.h"

#include <array>
#include <atomic>

namespace kxjob {
namespace {

std::array<std::atomic<long>, 4> holders{};
HMODULE ownModule = nullptr;

std::atomic<long>& Count(Holder holder) noexcept {
    return holders[static_cast<std::size_t>(holder)];
}

}  // namespace

void AddHolder(Holder holder) noexcept {
    ++Count(holder);
}

void RemoveHolder(Holder holder) noexcept {
    --Count(holder);
}

bool CanUnload() noexcept {
    for (const std::atomic<long>& count : holders) {
        if (count != 0) return false;
    }
    return true;
}

HMODULE OwnModule() noexcept {
    return ownModule;
}

void SetOwnModule(HMODULE module) noexcept {
    ownModule = module;
}

std::wstring OwnPath() {
    std::wstring path(MAX_PATH, L'\0');
    while (true) {
        const DWORD length = GetModuleFileNameW(ownModule, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace kxjob

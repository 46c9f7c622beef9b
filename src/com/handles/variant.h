#pragma once

#include <ole2.h>
#include <windows.h>

#include <utility>

namespace kxjob {

/// Owns what a VARIANT holds.
class Variant {
public:
    Variant() noexcept { VariantInit(&value_); }
    /// Takes over what `owned` holds.
    explicit Variant(VARIANT owned) noexcept : value_(owned) {}
    Variant(const Variant&) = delete;
    Variant(Variant&& other) noexcept : value_(other.Release()) {}
    Variant& operator=(Variant other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Variant() { VariantClear(&value_); }

    VARIANT& operator*() { return value_; }
    const VARIANT& operator*() const { return value_; }
    VARIANT* operator->() { return &value_; }
    const VARIANT* operator->() const { return &value_; }
    /// For functions that put a value in: empties this one first.
    VARIANT* Receive() {
        *this = Variant();
        return &value_;
    }
    /// Gives the content to the caller, who clears it.
    VARIANT Release() noexcept {
        const VARIANT given = value_;
        VariantInit(&value_);
        return given;
    }

private:
    VARIANT value_;
};

}  // namespace kxjob

#pragma once

#include <ole2.h>
#include <windows.h>

#include <utility>

namespace kxjob {

/// Owns one reference to an object.
template <typename T>
class ComPointer {
public:
    ComPointer() = default;
    /// Takes over the caller's reference.
    explicit ComPointer(T* owned) : object_(owned) {}
    ComPointer(const ComPointer& other) : object_(other.object_) {
        if (object_ != nullptr) object_->AddRef();
    }
    ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPointer& operator=(ComPointer other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPointer() {
        if (object_ != nullptr) object_->Release();
    }

    /// Adds a reference of its own.
    static ComPointer Of(T* object) {
        if (object != nullptr) object->AddRef();
        return ComPointer(object);
    }
    /// Another interface of an object; empty when it does not have it.
    template <typename Other>
    static ComPointer From(Other* object) {
        ComPointer found;
        if (object != nullptr) object->QueryInterface(__uuidof(T), found.Receive());
        return found;
    }

    T* Get() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    friend bool operator==(const ComPointer& pointer, std::nullptr_t) { return pointer.object_ == nullptr; }

    /// For functions that give a reference out: empties the pointer first.
    T** ReceiveTyped() {
        *this = ComPointer();
        return &object_;
    }
    void** Receive() { return reinterpret_cast<void**>(ReceiveTyped()); }
    /// Gives the reference to the caller.
    T* Release() { return std::exchange(object_, nullptr); }

private:
    T* object_ = nullptr;
};

}  // namespace kxjob

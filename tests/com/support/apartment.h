#pragma once

#include <ole2.h>
#include <windows.h>

namespace kxjob::testing_support {

/// A single-threaded apartment for as long as it lives.
class Apartment {
public:
    Apartment() : entered_(SUCCEEDED(CoInitialize(nullptr))) {}
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() {
        if (entered_) CoUninitialize();
    }

private:
    bool entered_;
};

}  // namespace kxjob::testing_support

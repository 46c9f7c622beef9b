#pragma once

#include <ole2.h>
#include <windows.h>

#include <exception>
#include <new>
#include <utility>

#include "kxjob/automation_error.h"

namespace kxjob {

/// Leaves the error with the thread for the client to fetch, in the name of the interface `iid`, and gives
/// its number as a status.
HRESULT Publish(REFIID iid, const AutomationError& error) noexcept;

/// For the system's own calls: raises a failed status with the system's words for it. What an earlier call
/// left with the thread does not count.
void RequireSuccess(HRESULT status);

/// Runs the body of an interface method: nothing thrown inside reaches the caller.
template <typename Body>
HRESULT AtBoundary(REFIID iid, Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
        return S_OK;
    } catch (const AutomationError& error) {
        return Publish(iid, error);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception& error) {
        return Publish(iid, AutomationError(E_UNEXPECTED, "kxJob", error.what()));
    } catch (...) {
        return E_UNEXPECTED;
    }
}

}  // namespace kxjob

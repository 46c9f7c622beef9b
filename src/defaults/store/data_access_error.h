#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "kxjob/automation_error.h"

namespace kxjob {

/// Raises 0x80040000 + 703, described as "[sqlState] what".
[[noreturn]] void RaiseStatementFailed(std::string_view sqlState, std::string_view what);

/// Raises 0x80040000 + 704, described as "[sqlState] The connection could not be opened: why". `why` must not
/// show what a connection string holds under a password's key.
[[noreturn]] void RaiseConnectionFailed(std::string_view why, std::string_view sqlState = "08001");

/// Raises 0x80040000 + 702: a query that had to find a row found none.
[[noreturn]] void RaiseNoRow();

/// The SQLSTATE that the description of such an error starts with.
std::string_view StateOf(const AutomationError& error);

/// `description` with `place` and a colon behind the SQLSTATE in brackets that it starts with.
std::string WithPlace(const std::string& description, std::string_view place);

/// "statement 3 of 100", for the one at `index` from 0.
std::string PlaceInBatch(std::size_t index, std::size_t count);

}  // namespace kxjob

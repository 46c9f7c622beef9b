#pragma once

#include <windows.h>

#include <string>

#include "com/handles/variant.h"

namespace kxjob::script_host {

/// Runs one statement on a connection of its own and returns the first cell of the first row as text: Null
/// when it is NULL, Empty when there is no row. Seeds stores, and looks at them without the library.
/// Raises std::runtime_error with what the driver says.
Variant RunStatement(const std::wstring& connectionString, const std::wstring& sql);

}  // namespace kxjob::script_host

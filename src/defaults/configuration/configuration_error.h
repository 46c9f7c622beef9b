#pragma once

#include <string>

namespace kxjob {

/// Raises 0x80040000 + 704: without a readable configuration there is no connection. `description` is a
/// sentence that repeats nothing of the document, for it may hold passwords.
[[noreturn]] void RaiseConfigurationError(const std::string& description);

}  // namespace kxjob

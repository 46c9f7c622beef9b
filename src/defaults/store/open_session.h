#pragma once

#include <memory>
#include <string>

#include "defaults/store/session.h"

namespace kxjob {

/// Opens the store that a connection string names, on the engine that it asks for.
/// Raises 0x80040000 + 704 when it cannot be opened, or when no engine here takes such a connection string.
std::unique_ptr<Session> OpenSession(const std::string& connectionString);

}  // namespace kxjob

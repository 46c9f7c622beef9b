#pragma once

#include <memory>
#include <span>

#include "defaults/store/connection_string.h"
#include "defaults/store/session.h"

namespace kxjob {

/// One engine family: the connection strings it takes, and what it does with them.
struct Engine {
    bool (*takes)(const ConnectionString& connection);
    /// Raises 0x80040000 + 704 when the store cannot be opened.
    std::unique_ptr<Session> (*open)(const ConnectionString& connection);
    /// Makes the empty database where the engine keeps one in a file and the file is missing; else does
    /// nothing. Raises 0x80040000 + 704 when it cannot be made.
    void (*createDatabase)(const ConnectionString& connection);
};

/// The engine families of this build; the first that takes a connection string gets it.
std::span<const Engine> StoreEngines();

}  // namespace kxjob

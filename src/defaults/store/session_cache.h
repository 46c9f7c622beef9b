#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "defaults/store/session.h"
#include "kxjob/automation_error.h"

namespace kxjob {

/// The open connections of one thread, one for each connection string. A lost one is dropped, so that the
/// next use opens a new one; the use that met the loss raises: nothing is retried.
class SessionCache {
public:
    /// Runs `work(Session&)` on the session of a connection string, opening it first where needed.
    /// Raises 0x80040000 + 704 when it cannot be opened.
    template <typename Work>
    decltype(auto) Use(const std::string& connectionString, Work&& work) {
        Session& session = Of(connectionString);
        try {
            return std::forward<Work>(work)(session);
        } catch (const AutomationError&) {
            if (session.IsLost()) sessions_.erase(connectionString);
            throw;
        }
    }

private:
    Session& Of(const std::string& connectionString);

    std::map<std::string, std::unique_ptr<Session>> sessions_;
};

/// Whether an error says that a statement's table does not exist.
bool IsMissingTable(const AutomationError& error);

}  // namespace kxjob

#pragma once

#include <string>
#include <vector>

#include "kxjob/configured_connection.h"

namespace kxjob::command {

/// What stands for the GUID of an application state that a container does not have.
inline constexpr const char* kNullGuid = "{00000000-0000-0000-0000-000000000000}";

/// The application states that the container names, such as PRODUCTION and DEVELOPMENT.
class ApplicationStates {
public:
    /// None when the store has no table of them.
    explicit ApplicationStates(const StoreConnection& connection);

    /// The GUID of the state with this name; the null GUID when the container has none.
    std::string GuidOf(const std::string& name) const;
    /// The name of the state with this GUID; empty when it has none.
    std::string NameOf(const std::string& guid) const;
    /// The GUID that a person means by a name or a GUID. Raises 0x80040000 + 702 for a name that the
    /// container does not have.
    std::string Meant(const std::string& typed) const;

private:
    struct State {
        std::string name;
        std::string guid;
    };
    std::vector<State> states_;
};

}  // namespace kxjob::command

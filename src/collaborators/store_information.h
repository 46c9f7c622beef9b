#pragma once

#include <string>

namespace kxjob {

/// What a store tells about itself.
class StoreInformation {
public:
    virtual ~StoreInformation() = default;
    /// What the database system calls itself, "PostgreSQL".
    virtual std::string EngineName(const std::string& connectionString) = 0;
    /// Its version as it writes it.
    virtual std::string EngineVersion(const std::string& connectionString) = 0;
    /// The time now by the store's clock, as ISO text in UTC; empty for an engine whose clock is not known
    /// how to ask for.
    virtual std::string NowISODateTime(const std::string& connectionString) = 0;
};

}  // namespace kxjob

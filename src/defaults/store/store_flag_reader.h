#pragma once

#include <memory>

#include "collaborators/system_flag_reader.h"
#include "defaults/store/session_cache.h"

namespace kxjob {

/// Reads flags from the table `systemflag` of the container. A flag without a row is clear, and so is every
/// flag of a container without that table.
class StoreFlagReader : public SystemFlagReader {
public:
    explicit StoreFlagReader(std::shared_ptr<SessionCache> sessions) : sessions_(std::move(sessions)) {}

    Value ReadFlag(const std::string& connectionString, DataStoreProvider provider,
                   const std::string& nameQualifier, const std::string& flagName) override;

private:
    std::shared_ptr<SessionCache> sessions_;
};

}  // namespace kxjob

#pragma once

#include <memory>
#include <string>
#include <utility>

#include "collaborators/store_information.h"
#include "defaults/store/session_cache.h"

namespace kxjob {

/// Asks the thread's session with the store.
class SessionStoreInformation : public StoreInformation {
public:
    explicit SessionStoreInformation(std::shared_ptr<SessionCache> sessions)
        : sessions_(std::move(sessions)) {}

    std::string EngineName(const std::string& connectionString) override;
    std::string EngineVersion(const std::string& connectionString) override;
    std::string NowISODateTime(const std::string& connectionString) override;

private:
    std::shared_ptr<SessionCache> sessions_;
};

}  // namespace kxjob

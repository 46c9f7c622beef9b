#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "defaults/store/session_cache.h"
#include "defaults/text/standard_input_guard.h"
#include "kxjob/component.h"

namespace kxjob {

/// `ListOfContainerSubSystems` (connection string, provider, qualifier): the names in the container's table
/// `subsystem`, an array from 0; without elements when there is no such table.
class ApplicationSchema : public Component {
public:
    explicit ApplicationSchema(std::shared_ptr<SessionCache> sessions);

    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;

private:
    Value ListOfContainerSubSystems(const std::string& connectionString, const std::string& qualifier);

    std::shared_ptr<SessionCache> sessions_;
    StandardInputGuard guard_;
};

}  // namespace kxjob

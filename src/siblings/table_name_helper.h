#pragma once

#include <span>
#include <string>
#include <string_view>

#include "kxjob/component.h"

namespace kxjob {

/// Properties `job`, `JobItem`, `jobtask` and `JobType`: the base names of these tables.
class TableNameHelper : public Component {
public:
    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Get(std::string_view property) override;
};

}  // namespace kxjob

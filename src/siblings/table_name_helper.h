#pragma once

#include "kxjob/component.h"

namespace kxjob {

/// Properties `job`, `JobItem`, `jobtask` and `JobType`: the base names of these tables.
class TableNameHelper : public Component {
public:
    std::string Name() const override;
    Value Get(std::string_view property) override;
};

}  // namespace kxjob

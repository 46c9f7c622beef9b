#pragma once

#include <string>

#include "kxjob/component.h"

namespace kxjob {

/// Creates components by their complete ProgID, as the machine knows them.
class Platform {
public:
    virtual ~Platform() = default;
    /// Raises when the component cannot be created; never gives null.
    virtual ComponentRef CreateObject(const std::string& progId) = 0;
};

}  // namespace kxjob

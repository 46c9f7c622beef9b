#pragma once

#include <string>

#include "collaborators/platform.h"

namespace kxjob {

/// Components as COM knows them: in-process servers, by ProgID.
class ComPlatform : public Platform {
public:
    /// Raises what the component's own constructor raised, else the reason why there is none: 0x800401F3 for
    /// a ProgID that is not registered.
    ComponentRef CreateObject(const std::string& progId) override;
};

}  // namespace kxjob

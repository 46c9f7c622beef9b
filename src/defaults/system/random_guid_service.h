#pragma once

#include <string>

#include "collaborators/guid_service.h"

namespace kxjob {

/// Version 4 GUIDs from the operating system's random source.
class RandomGuidService : public GuidService {
public:
    std::string NewGuid() override;
    std::string NullGuid() override;
};

}  // namespace kxjob

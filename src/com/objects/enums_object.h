#pragma once

#include <kxJob.h>

#include "com/objects/dual_object.h"

namespace kxjob {

/// Useful indexers into returned data: has no members, its type library carries the enumerations.
class EnumsObject final : public DualObject<_Enums> {
public:
    using DualObject::DualObject;
};

}  // namespace kxjob

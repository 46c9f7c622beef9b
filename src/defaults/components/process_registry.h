#pragma once

#include <functional>
#include <string>

#include "kxjob/component.h"

namespace kxjob {

/// What `RegisterComponent` was given for this ProgID; empty when nothing is registered.
std::function<ComponentRef()> RegisteredCreator(const std::string& progId);

}  // namespace kxjob

#pragma once

#include "com/server/class_table.h"

namespace kxjob {

/// Gives the factory of one class under an interface. Nothing thrown leaves it.
HRESULT MakeClassFactory(const ComClass& which, REFIID iid, void** factory) noexcept;

}  // namespace kxjob

#pragma once

#include <ole2.h>
#include <windows.h>

#include "com/handles/com_pointer.h"
#include "kxjob/component.h"

namespace kxjob {

/// A component as a COM object whose members are reached by name, whatever their letter case. It has no type
/// library and takes no named arguments.
ComPointer<IDispatch> MakeComponentDispatch(ComponentRef component);

}  // namespace kxjob

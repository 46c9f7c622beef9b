#pragma once

#include <ole2.h>
#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "com/handles/com_pointer.h"
#include "com/handles/text.h"
#include "com/handles/variant.h"

namespace kxjob::testing_support {

/// What a late-bound call came to.
struct Outcome {
    HRESULT status = S_OK;
    Variant result;
    std::int32_t number = 0;  // the error's, when status is DISP_E_EXCEPTION
    std::string source;
    std::string description;
    UINT badArgument = static_cast<UINT>(-1);
};

/// A VARIANT for an argument list. What they own is freed by nobody: tests end soon.
VARIANT Text(std::string_view text);
VARIANT Number(LONG number);
VARIANT Real(double number);
VARIANT Boolean(bool truth);
VARIANT Missing();
/// A script's variable.
VARIANT Reference(VARIANT& variable);

/// Calls a member by name, as a script engine does. `names` are those of the last arguments.
Outcome CallByName(IDispatch& object, const wchar_t* member, std::vector<VARIANT> arguments,
                   std::vector<const wchar_t*> names = {},
                   WORD kind = DISPATCH_METHOD | DISPATCH_PROPERTYGET);

/// A new object of a registered class; fails the test when there is none.
ComPointer<IDispatch> NewObject(const wchar_t* progId);

}  // namespace kxjob::testing_support

#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>

namespace kxjob::script_host {

/// A value as `kxjob call` prints it in JSON: {"empty":true}, null, {"rows":[[...]]} row by row, a list for
/// an array. Raises std::invalid_argument for a kind that the automation face does not know.
std::string ValueText(const VARIANT& value);

}  // namespace kxjob::script_host

#pragma once

#include <string>
#include <vector>

#include "check_tally.h"
#include "com/handles/com_pointer.h"
#include "named_functions.h"

namespace kxjob::script_host {

/// What a script knows as `host`:
///     Expect(n), Check(what, expected, actual), Fail(what)    its checks; Check compares kind and value
///     Write(value), Text(value)                               a line of output; a value as `kxjob call`
///     prints it Argument(i), ArgumentCount()                            what stands behind "--" on the
///     command line ReadFile(path), DeleteFile(path)                        a UTF-8 text; a file that need
///     not be there Execute(connectionString, sql)                          one statement over ODBC; the
///     first cell as text
/// `tally` outlives it.
ComPointer<NamedFunctions> MakeHost(CheckTally& tally, std::vector<std::wstring> arguments);

}  // namespace kxjob::script_host

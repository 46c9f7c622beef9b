#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kxjob {

/// The words of a command line. Blanks part them, but not between double or between single quotes, which are
/// left out; every other character, the backslash too, stands for itself. Raises 0x80040000 + 704 for a quote
/// without its partner.
std::vector<std::string> SplitCommandLine(std::string_view commandLine);

/// The executable file that `program` names: the path itself when it holds a slash, else the first on PATH.
/// Empty when there is none.
std::string FindProgram(const std::string& program);

}  // namespace kxjob

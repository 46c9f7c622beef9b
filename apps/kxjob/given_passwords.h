#pragma once

#include <string>
#include <vector>

namespace kxjob::command {

/// A sentence about wrong usage, in which arguments that name a password, and what follows them up to the
/// next option, are replaced by "***": a connection string under a mistyped option, say, or one whose blanks
/// the shell took for the ends of arguments.
std::string WithoutGivenPasswords(std::string sentence, const std::vector<std::string>& arguments);

}  // namespace kxjob::command

#pragma once

#include <span>
#include <string>
#include <vector>

namespace kxjob {

/// The same effect in fewer statements: of those that follow each other, INSERTs of one row of literals into
/// the same columns of a table become one INSERT of many rows. Texts have no escape but a doubled quote. What
/// is not understood for certain stays as it is.
///
/// Rows are joined only where the same columns hold NULL, or what a server could take for 0: such a value may
/// stand for one that it makes itself, and for rows of both kinds together it makes others.
std::vector<std::string> WithRowsJoined(std::span<const std::string> statements);

}  // namespace kxjob

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kxjob {

/// The statements of a script, each without the ";" that ends it. A statement ends at a ";" with a line break
/// (or the end of the script) behind it; a ";" elsewhere belongs to the statement. Blank statements are left
/// out.
std::vector<std::string> ScriptStatements(std::string_view script);

}  // namespace kxjob

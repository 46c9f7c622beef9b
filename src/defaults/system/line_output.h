#pragma once

#include <string>
#include <string_view>

namespace kxjob {

/// Appends `line` to a file, which is made when it is missing, so that no other writer's line gets in
/// between; the name is UTF-8. Tells whether all of it was written.
bool AppendToFile(const std::string& file, std::string_view line);

/// The same to standard error; what cannot be written is lost.
void WriteToStandardError(std::string_view line);

}  // namespace kxjob

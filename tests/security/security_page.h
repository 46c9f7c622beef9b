#pragma once

#include <string>
#include <vector>

namespace kxjob::testing_support {

/// SECURITY.md of this project, line by line.
const std::vector<std::string>& SecurityPage();

/// The lines of the indented block behind the paragraph that begins with "**TITLE", without their
/// indentation.
std::vector<std::string> CodeBlockOf(const std::vector<std::string>& page, const std::string& title);

}  // namespace kxjob::testing_support

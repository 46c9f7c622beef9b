#pragma once

#include <string>

namespace kxjob::script_host {

/// The text of a UTF-8 file. Raises std::runtime_error when it cannot be read.
std::wstring ReadTextFile(const std::wstring& path);

/// Deletes a file; one that is not there is no error. Raises std::runtime_error when it stays.
void DeleteFileIfThere(const std::wstring& path);

}  // namespace kxjob::script_host

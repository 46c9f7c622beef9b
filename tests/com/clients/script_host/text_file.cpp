#include "text_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "com/handles/text.h"

namespace kxjob::script_host {

std::wstring ReadTextFile(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    if (!file) throw std::runtime_error(ToUtf8(path) + " cannot be read");
    return ToWide(std::string(std::istreambuf_iterator<char>(file), {}));
}

void DeleteFileIfThere(const std::wstring& path) {
    std::error_code fault;
    std::filesystem::remove(std::filesystem::path(path), fault);
    if (fault) throw std::runtime_error(ToUtf8(path) + " cannot be deleted: " + fault.message());
}

}  // namespace kxjob::script_host

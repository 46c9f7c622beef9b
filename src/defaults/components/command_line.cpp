#include "defaults/components/command_line.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>

#include "defaults/configuration/configuration_error.h"

namespace kxjob {
namespace {

bool IsExecutableFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored) && access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::vector<std::string> SplitCommandLine(std::string_view commandLine) {
    std::vector<std::string> words;
    std::string word;
    bool isInWord = false;  // a pair of quotes makes a word even of nothing
    char quote = '\0';
    for (const char character : commandLine) {
        if (quote != '\0' && character == quote) {
            quote = '\0';
        } else if (quote != '\0') {
            word += character;
        } else if (character == '"' || character == '\'') {
            quote = character;
            isInWord = true;
        } else if (character == ' ' || character == '\t') {
            if (isInWord) words.push_back(word);
            word.clear();
            isInWord = false;
        } else {
            word += character;
            isInWord = true;
        }
    }
    if (quote != '\0')
        RaiseConfigurationError("A component's command in the configuration has a quote without its partner");
    if (isInWord) words.push_back(word);
    return words;
}

std::string FindProgram(const std::string& program) {
    if (program.empty()) return {};
    if (program.find('/') != std::string::npos) return IsExecutableFile(program) ? program : std::string();
    const char* path = std::getenv("PATH");
    std::string_view folders = path == nullptr ? std::string_view() : std::string_view(path);
    while (!folders.empty()) {
        const std::size_t length = std::min(folders.find(':'), folders.size());
        std::string candidate = std::string(folders.substr(0, length)) + "/" + program;
        if (length > 0 && IsExecutableFile(candidate)) return candidate;
        folders.remove_prefix(std::min(length + 1, folders.size()));
    }
    return {};
}

}  // namespace kxjob

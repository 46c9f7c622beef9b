#include "statements/statement_places.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>

namespace kxjob::testing_support {
namespace {

using Look = std::function<void(const std::string& file, std::int32_t line, const std::string& text)>;

void ReadEveryLine(const std::string& sources, const Look& look) {
    constexpr std::array<const char*, 6> kFolders = {"tasks",      "lifecycle", "queries",
                                                     "scheduling", "store",     "vocabulary"};
    for (const char* folder : kFolders) {
        for (const auto& entry :
             std::filesystem::directory_iterator(std::filesystem::path(sources) / folder)) {
            if (entry.path().extension() != ".cpp") continue;
            const std::string file = std::string(folder) + "/" + entry.path().filename().string();
            std::ifstream in(entry.path());
            std::int32_t line = 0;
            for (std::string text; std::getline(in, text);) look(file, ++line, text);
        }
    }
}

}  // namespace

std::vector<StatementPlace> StatementPlaces(const std::string& sources) {
    // The frame's three; what sends through an object made for the call; any member of a component.
    static const std::regex sending(
        R"(\.(?:Execute|Query|WriteLongText)\(|\)\.(?:Flush|ReadFlag)\(|\(executor\)\.Add\(|\.Call\()");
    std::vector<StatementPlace> places;
    ReadEveryLine(sources, [&](const std::string& file, std::int32_t line, const std::string& text) {
        if (std::regex_search(text, sending)) places.push_back({file, line, text});
    });
    return places;
}

std::map<std::string, std::string> FilesOfMethods(const std::string& sources) {
    static const std::regex frame(R"re(InFrame\("(\w+)")re");
    std::map<std::string, std::string> files;
    ReadEveryLine(sources, [&](const std::string& file, std::int32_t /*line*/, const std::string& text) {
        std::smatch match;
        if (std::regex_search(text, match, frame)) files[match[1]] = file;
    });
    return files;
}

}  // namespace kxjob::testing_support

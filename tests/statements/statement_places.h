#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kxjob::testing_support {

/// Where a source of the library calls something that may send a statement.
struct StatementPlace {
    std::string file;
    std::int32_t line = 0;
    std::string text;
};

/// All such places below `sources`, in the folders of the methods.
std::vector<StatementPlace> StatementPlaces(const std::string& sources);

/// The file that holds each method.
std::map<std::string, std::string> FilesOfMethods(const std::string& sources);

}  // namespace kxjob::testing_support

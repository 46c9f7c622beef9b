#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace kxjob::command {

/// Rows of texts under a title, in columns as wide as their widest cell.
class TextTable {
public:
    explicit TextTable(std::vector<std::string> header);
    void AddRow(std::vector<std::string> cells);
    void Print(std::ostream& out, const std::string& title) const;

private:
    std::vector<std::vector<std::string>> rows_;  // the header first
};

}  // namespace kxjob::command

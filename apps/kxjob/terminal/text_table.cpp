#include "terminal/text_table.h"

#include <fmt/format.h>

#include <algorithm>

namespace kxjob::command {

TextTable::TextTable(std::vector<std::string> header) {
    rows_.push_back(std::move(header));
}

void TextTable::AddRow(std::vector<std::string> cells) {
    cells.resize(rows_.front().size());
    rows_.push_back(std::move(cells));
}

void TextTable::Print(std::ostream& out, const std::string& title) const {
    std::vector<std::size_t> widths(rows_.front().size());
    for (const auto& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    out << title << '\n';
    for (const auto& row : rows_) {
        std::string line = "  ";
        for (std::size_t i = 0; i < row.size(); ++i) line += fmt::format("{:<{}}  ", row[i], widths[i]);
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
    out << '\n';
}

}  // namespace kxjob::command

#include "terminal/text_table.h"

#include <algorithm>

#include "terminal/printable.h"

namespace kxjob::command {
namespace {

std::vector<TextTable::Cell> Plain(std::vector<std::string> texts) {
    std::vector<TextTable::Cell> cells;
    cells.reserve(texts.size());
    for (std::string& text : texts) cells.push_back({.text = std::move(text)});
    return cells;
}

}  // namespace

TextTable::TextTable(std::vector<std::string> header) {
    rows_.push_back(Plain(std::move(header)));
}

void TextTable::AddRow(std::vector<std::string> cells) {
    AddCells(Plain(std::move(cells)));
}

void TextTable::AddCells(std::vector<Cell> cells) {
    cells.resize(rows_.front().size());
    for (Cell& cell : cells) cell.text = OnOneLine(cell.text);
    rows_.push_back(std::move(cells));
}

void TextTable::Print(std::ostream& out, const std::string& title, const Palette& palette) const {
    std::vector<std::size_t> widths(rows_.front().size());
    for (const auto& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], WidthOf(row[i].text));
    }
    out << title << '\n';
    const bool isEmpty = rows_.size() == 1;  // a header over nothing would tell nothing
    for (const auto& row : rows_) {
        if (isEmpty) break;
        std::size_t blanks = 2;  // ahead of the next text that is to be seen
        for (std::size_t i = 0; i < row.size(); ++i) {
            const Cell& cell = row[i];
            if (!cell.text.empty()) {
                out << std::string(blanks, ' ') << palette.Paint(cell.text, cell.tone);
                blanks = 0;
            }
            blanks += widths[i] - WidthOf(cell.text) + 2;
        }
        out << '\n';
    }
    out << '\n';
}

TextTable::Cell StateCell(const std::string& state, const char* ofNone) {
    return {.text = state.empty() ? ofNone : state, .tone = ToneOf(state)};
}

}  // namespace kxjob::command

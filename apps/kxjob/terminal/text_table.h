#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "terminal/colour.h"

namespace kxjob::command {

/// Rows of texts under a title, in columns as wide as their widest cell. Control characters become blanks.
class TextTable {
public:
    struct Cell {
        std::string text;
        Tone tone = Tone::kPlain;
    };

    explicit TextTable(std::vector<std::string> header);
    void AddRow(std::vector<std::string> cells);
    void AddCells(std::vector<Cell> cells);
    void Print(std::ostream& out, const std::string& title, const Palette& palette = {}) const;

private:
    std::vector<std::vector<Cell>> rows_;  // the header first
};

/// A state in its colour; `ofNone` where there is none.
TextTable::Cell StateCell(const std::string& state, const char* ofNone = "");

}  // namespace kxjob::command

#include "model/store_comparison.h"

#include <algorithm>
#include <map>
#include <regex>

#include "kxjob/array.h"
#include "model/value_text.h"

namespace kxjob::model {
namespace {

using Cells = std::vector<Value>;

std::vector<Cells> RowsOf(const Value& rows) {
    std::vector<Cells> found;
    if (rows.IsEmpty()) return found;
    const RowArray& array = rows.Rows();
    for (std::int32_t row = 0; row < array.Rows(); ++row) {
        Cells& cells = found.emplace_back();
        for (std::int32_t column = 0; column < array.Columns(); ++column) {
            cells.push_back(array.Cell(column, row));
        }
    }
    return found;
}

bool IsKnown(const Row& row) {
    return std::all_of(row.begin(), row.end(),
                       [](const auto& cell) { return std::holds_alternative<Value>(cell.second); });
}

bool IsSame(const Row& row, const std::vector<std::string>& columns, const Cells& stored) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!Holds(row, columns[i], stored[i])) return false;
    }
    return true;
}

bool IsGuid(const std::string& text) {
    static const std::regex shape(
        R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\})");
    return std::regex_match(text, shape);
}

bool IsTimeOf(const std::string& text, const Outcome& outcome) {
    static const std::regex shape(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)");
    return std::regex_match(text, shape) && text >= outcome.began && text <= outcome.ended;
}

/// The block: the moment, two machine texts, two user texts, process and thread.
bool IsNoteOf(const Note& note, const std::string& text, const Outcome& outcome) {
    static const std::regex shape(
        "([^\r]+)\r\n\r\nMachine details: [^\\\\\r\n]+\\\\[^\\\\\r\n]+\r\n\r\n"
        "User details: [^\\\\\r\n]+\\\\[^\\\\\r\n]+\r\n\r\nProcess ID / Thread ID: \\d+ / \\d+\r\n\r\n");
    const std::size_t around = note.before.size() + note.after.size();
    if (text.size() < around || !text.starts_with(note.before) || !text.ends_with(note.after)) return false;
    const std::string block = text.substr(note.before.size(), text.size() - around);
    std::smatch parts;
    return std::regex_match(block, parts, shape) && IsTimeOf(parts[1], outcome);
}

std::string Only(const char* side, const std::string& row) {
    return std::string("  only in the ") + side + ": " + row + "\n";
}

std::string CellText(const Cell& cell) {
    struct {
        std::string operator()(const Value& value) const { return ValueText(value); }
        std::string operator()(const NewGuid&) const { return "a new GUID"; }
        std::string operator()(const Now&) const { return "now"; }
        std::string operator()(const Note& note) const {
            return ValueText(note.before) + " block " + ValueText(note.after);
        }
    } text;
    return std::visit(text, cell);
}

std::string RowsDifference(const Value& result, const ExpectedRows& expected) {
    if (!result.IsEmpty() && !result.IsRowArray()) return "no rows: " + ValueText(result) + "\n";
    std::multiset<std::string> left;
    for (const Cells& row : expected.rows) left.insert(RowText(row));
    std::string difference;
    const std::vector<Cells> given = RowsOf(result);
    if (!result.IsEmpty() && given.empty()) difference += "rows, but none of them\n";
    for (const Cells& row : given) {
        const auto same = left.find(RowText(row));
        if (same == left.end()) {
            difference += Only("result", RowText(row));
        } else {
            left.erase(same);
        }
    }
    for (const std::string& row : left) difference += Only("model", row);
    if (expected.ascending) {
        const bool isSorted = std::is_sorted(given.begin(), given.end(), [&](const Cells& a, const Cells& b) {
            return a.at(*expected.ascending).ToInt32() < b.at(*expected.ascending).ToInt32();
        });
        if (!isSorted) difference += "rows out of order\n";
    }
    return difference;
}

}  // namespace

bool StoreComparison::TakesGuid(int number, const Value& stored) {
    if (!stored.IsText() || !IsGuid(stored.Text())) return false;
    const auto known = guids_.find(number);
    if (known != guids_.end()) return known->second == stored.Text();
    if (!seen_.insert(stored.Text()).second) return false;
    guids_[number] = stored.Text();
    return true;
}

bool StoreComparison::Takes(const Cell& cell, const Value& stored, const Outcome& outcome) {
    if (const auto* guid = std::get_if<NewGuid>(&cell)) return TakesGuid(guid->number, stored);
    if (std::holds_alternative<Now>(cell)) return stored.IsText() && IsTimeOf(stored.Text(), outcome);
    if (const auto* note = std::get_if<Note>(&cell)) {
        return stored.IsText() && IsNoteOf(*note, stored.Text(), outcome);
    }
    return std::get<Value>(cell) == stored;
}

bool StoreComparison::TakesRow(Row& row, const std::vector<std::string>& columns, const Cells& stored,
                               const Outcome& outcome) {
    for (std::size_t i = 0; i < columns.size(); ++i) {  // the sure cells first: a GUID is taken over once
        const Cell& cell = row.at(columns[i]);
        if (std::holds_alternative<Value>(cell) && std::get<Value>(cell) != stored[i]) return false;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!Takes(row.at(columns[i]), stored[i], outcome)) return false;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) row[columns[i]] = stored[i];
    return true;
}

std::string StoreComparison::TableDifference(Table& table, const Outcome& outcome) {
    std::string sql = "SELECT ";
    for (const std::string& column : table.columns)
        sql += (&column == &table.columns[0] ? "" : ", ") + column;
    std::multimap<std::string, Cells> left;  // by the first column, mostly the key
    for (Cells& row : RowsOf(store_->Query(sql + " FROM " + store_->Table(table.name)))) {
        std::string key = row.front().ToJoinedText();
        left.emplace(std::move(key), std::move(row));
    }
    std::string difference;
    std::vector<Row*> open;
    for (Row& row : table.rows) {
        if (!IsKnown(row)) {
            open.push_back(&row);
            continue;
        }
        const auto [first, end] = left.equal_range(Held(row, table.columns[0]).ToJoinedText());
        const auto same = std::find_if(
            first, end, [&](const auto& stored) { return IsSame(row, table.columns, stored.second); });
        if (same == end) {
            difference += Only("model", RowText(Project(row, table.columns)));
        } else {
            left.erase(same);
        }
    }
    for (Row* row : open) {
        const auto same = std::find_if(left.begin(), left.end(), [&](const auto& stored) {
            return TakesRow(*row, table.columns, stored.second, outcome);
        });
        if (same != left.end()) {
            left.erase(same);
            continue;
        }
        std::string text;
        for (const std::string& column : table.columns) text += CellText(row->at(column)) + " | ";
        difference += Only("model", text);
    }
    for (const auto& [key, row] : left) difference += Only("store", RowText(row));
    return difference.empty() ? difference : table.name + ":\n" + difference;
}

std::string StoreComparison::ResultDifference(const Outcome& outcome, const Foretold& foretold) const {
    const auto number = [](std::int32_t error) {
        return std::to_string(static_cast<std::uint32_t>(error) - 0x80040000U);
    };
    if (outcome.error) {
        const bool isForetold =
            std::count(foretold.errors.begin(), foretold.errors.end(), *outcome.error) > 0;
        return isForetold ? "" : "error 0x80040000 + " + number(*outcome.error) + "\n";
    }
    if (!foretold.errors.empty()) return "no error, but not " + number(foretold.errors.front()) + "\n";
    const Value& result = outcome.result;
    if (const auto* guid = std::get_if<NewGuid>(&foretold.result)) {
        const auto taken = guids_.find(guid->number);
        const bool isTaken =
            taken == guids_.end() ? result.IsText() && IsGuid(result.Text()) : result == Value(taken->second);
        return isTaken ? "" : "the new GUID is not " + ValueText(result) + "\n";
    }
    if (const auto* values = std::get_if<OneOf>(&foretold.result)) {
        return std::count(values->begin(), values->end(), result) > 0
                   ? ""
                   : "result " + ValueText(result) + ", not " + RowText(*values) + "\n";
    }
    if (const auto* rows = std::get_if<ExpectedRows>(&foretold.result)) return RowsDifference(result, *rows);
    return result.IsEmpty() ? "" : "a result: " + ValueText(result) + "\n";
}

std::string StoreComparison::DifferenceAfter(const Outcome& outcome, const Foretold& foretold,
                                             Tables& tables) {
    guids_.clear();
    std::string difference;
    for (Table* table : tables.All()) difference += TableDifference(*table, outcome);
    return difference + ResultDifference(outcome, foretold);
}

}  // namespace kxjob::model

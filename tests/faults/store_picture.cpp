#include "faults/store_picture.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "kxjob/array.h"

namespace kxjob::testing_support {
namespace {

struct PicturedTable {
    const char* table;
    const char* columns;
};

constexpr std::array<PicturedTable, 5> kTables = {{
    {"kx_job",
     "jobguid, jobtypeid, description, parameters, appstateguid, jobstateid, nextjobitem, totalitemcount,"
     " succeededitemcount, faileditemcount, startdt, lastcompletiondt, sumoftimeincsq, failurenote,"
     " jobeditorlockguid, lockduration"},
    {"kx_JobItem",
     "jobitemguid, jobguid, identifier, sequence, data, jobitemstateid, startdt, enddt, failurenote,"
     " jobtaskguid"},
    {"kx_jobtask",
     "jobtaskguid, description, jobguid, usercontext, machine, processid, threadid, startdt, enddt,"
     " jobtaskstateid, lastjobitem, command, lockguid"},
    {"kx_JobType", "jobtypeid, description, implprogid, notificationprogid"},
    {"kx_adminhistory", "historyid, writtendt, actioncode, detail"},
}};

/// The texts that the test brings do not change from run to run.
bool IsDrawnGuid(std::string_view text) {
    return text.size() == 38 && text.front() == '{' && text.back() == '}' &&
           !text.starts_with("{00000000-0000-4000-8000-");
}

bool IsPresentTime(std::string_view text) {
    return text.size() == 24 && text[10] == 'T' && text.back() == 'Z' && !text.starts_with("2026-03-01T");
}

/// A note with the lines in front of it, from the time on, in one word.
std::string WithoutCircumstances(std::string text) {
    constexpr std::string_view kMachine = "\r\n\r\nMachine details: ";
    constexpr std::string_view kIds = "\r\n\r\nProcess ID / Thread ID: ";
    constexpr std::string_view kLine = "\r\n\r\n";
    const std::size_t machine = text.find(kMachine);
    const std::size_t ids = text.find(kIds);
    if (machine == std::string::npos || ids == std::string::npos || machine < 24) return text;
    const std::size_t end = text.find(kLine, ids + kLine.size());
    if (end == std::string::npos || !IsPresentTime(text.substr(machine - 24, 24))) return text;
    return text.replace(machine - 24, end + kLine.size() - (machine - 24), "{circumstances}");
}

std::string Pictured(const Value& cell) {
    if (cell.IsNull()) return "NULL";
    const std::string text = cell.ToText();
    if (IsDrawnGuid(text) || text.starts_with("{new}")) return "{new}";
    return IsPresentTime(text) ? "{now}" : WithoutCircumstances(text);
}

}  // namespace

StorePicture PictureOf(Session& session) {
    StorePicture picture;
    for (const auto& [table, columns] : kTables) {
        const Value found = session.Query(std::string("SELECT ") + columns + " FROM " + table);
        if (found.IsEmpty()) continue;
        const RowArray& rows = found.Rows();
        for (std::int32_t row = 0; row < rows.Rows(); ++row) {
            std::string text = table;
            for (std::int32_t column = 0; column < rows.Columns(); ++column) {
                text += " | " + Pictured(rows.Cell(column, row));
            }
            picture.push_back(text);
        }
    }
    std::sort(picture.begin(), picture.end());
    return picture;
}

std::string DifferenceOf(const StorePicture& expected, const StorePicture& found) {
    const auto only = [](const StorePicture& in, const StorePicture& notIn, const char* what) {
        StorePicture rows;
        std::set_difference(in.begin(), in.end(), notIn.begin(), notIn.end(), std::back_inserter(rows));
        std::string text;
        for (const std::string& row : rows) text += std::string("\n  ") + what + ": " + row;
        return text;
    };
    return only(expected, found, "missing") + only(found, expected, "too much");
}

}  // namespace kxjob::testing_support

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kxjob/array.h"
#include "kxjob/value.h"

namespace kxjob::command {

/// One row of a query's result, its cells by column.
class Row {
public:
    Row(const RowArray& rows, std::int32_t row) : rows_(&rows), row_(row) {}

    /// NULL is the empty text.
    std::string Text(std::int32_t column) const { return Cell(column).ToJoinedText(); }
    /// Nothing for NULL and for the empty text, which some methods write in its place.
    std::optional<std::string> OptionalText(std::int32_t column) const;
    /// NULL is 0.
    std::int64_t Whole(std::int32_t column) const;
    double Real(std::int32_t column) const { return Cell(column).IsNull() ? 0 : Cell(column).ToDouble(); }

private:
    const Value& Cell(std::int32_t column) const { return rows_->Cell(column, row_); }

    const RowArray* rows_;
    std::int32_t row_;
};

/// `read(Row)` of every row of a query's result, in its order; nothing for Empty.
template <typename Read>
auto ReadRows(const Value& result, Read read) {
    std::vector<decltype(read(std::declval<Row>()))> records;
    if (result.IsEmpty()) return records;
    records.reserve(static_cast<std::size_t>(result.Rows().Rows()));
    for (std::int32_t row = 0; row < result.Rows().Rows(); ++row) {
        records.push_back(read(Row(result.Rows(), row)));
    }
    return records;
}

}  // namespace kxjob::command

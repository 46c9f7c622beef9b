#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "kxjob/export.h"
#include "kxjob/value.h"

namespace kxjob {

/// A query result: (column, row), both from 0. Every row has all columns, in SELECT order.
class KXJOB_EXPORT RowArray {
public:
    explicit RowArray(std::int32_t columns) : columns_(columns) {}

    std::int32_t Columns() const { return columns_; }
    std::int32_t Rows() const;
    /// Raises 0x800A0009 when `column` or `row` is out of range.
    const Value& Cell(std::int32_t column, std::int32_t row) const;

    /// Adds a row of exactly `Columns()` cells. Raises 0x800A0009 for another count.
    void AddRow(std::vector<Value> cells);
    /// For readers that fill cell by cell: appends the next cell; a row is complete after `Columns()` of
    /// them.
    void AddCell(Value cell) {
        if (pieces_.empty() || pieces_.back().size() == kPiece) BeginPiece();
        pieces_.back().push_back(std::move(cell));
    }

    friend bool operator==(const RowArray&, const RowArray&) = default;

private:
    static constexpr std::size_t kPiece = 1024;

    void BeginPiece();

    std::int32_t columns_;
    std::vector<std::vector<Value>> pieces_;  // row after row: no cell moves when more are added
};

/// A general array: any number of dimensions, each with its own lower bound.
class KXJOB_EXPORT Array {
public:
    struct Dimension {
        std::int32_t lowerBound = 0;
        std::int32_t count = 0;

        friend bool operator==(const Dimension&, const Dimension&) = default;
    };

    /// All elements Empty. Raises 0x800A0009 without a dimension, with a negative
    /// count, or when an index would need more than 32 bits.
    explicit Array(std::vector<Dimension> dimensions);
    /// One dimension that holds `items`, the first at `lowerBound`.
    static Array List(std::vector<Value> items, std::int32_t lowerBound = 0);

    std::span<const Dimension> Dimensions() const { return dimensions_; }
    std::size_t ElementCount() const { return elements_.size(); }
    /// All of them, the last index running fastest.
    std::span<const Value> Elements() const { return elements_; }
    /// One index a dimension, counted from its lower bound. Raises 0x800A0009 when out of range.
    const Value& At(std::span<const std::int32_t> index) const { return elements_[Offset(index)]; }
    Value& At(std::span<const std::int32_t> index) { return elements_[Offset(index)]; }
    /// The element of a one-dimensional array.
    const Value& At(std::int32_t index) const { return At(std::span(&index, 1)); }

    friend bool operator==(const Array&, const Array&) = default;

private:
    std::size_t Offset(std::span<const std::int32_t> index) const;

    std::vector<Dimension> dimensions_;
    std::vector<Value> elements_;  // the last index runs fastest
};

}  // namespace kxjob

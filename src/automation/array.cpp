#include "kxjob/array.h"

#include <limits>
#include <utility>

#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {

namespace {

/// Every index must be a 32-bit number.
void RequireSound(const Array::Dimension& dimension) {
    const std::int64_t upperBound = std::int64_t{dimension.lowerBound} + dimension.count - 1;
    if (dimension.count < 0 || upperBound > std::numeric_limits<std::int32_t>::max()) {
        RaiseRuntimeError(error_number::kSubscriptOutOfRange);
    }
}

}  // namespace

std::int32_t RowArray::Rows() const {
    if (columns_ == 0 || pieces_.empty()) return 0;
    const std::size_t cells = (pieces_.size() - 1) * kPiece + pieces_.back().size();
    return static_cast<std::int32_t>(cells / static_cast<std::size_t>(columns_));
}

const Value& RowArray::Cell(std::int32_t column, std::int32_t row) const {
    if (column < 0 || column >= columns_ || row < 0 || row >= Rows()) {
        RaiseRuntimeError(error_number::kSubscriptOutOfRange);
    }
    const std::size_t place =
        static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column);
    return pieces_[place / kPiece][place % kPiece];
}

void RowArray::AddRow(std::vector<Value> cells) {
    if (cells.size() != static_cast<std::size_t>(columns_))
        RaiseRuntimeError(error_number::kSubscriptOutOfRange);
    for (Value& cell : cells) AddCell(std::move(cell));
}

/// The first piece grows with its cells: most results are small.
void RowArray::BeginPiece() {
    std::vector<Value>& piece = pieces_.emplace_back();
    if (pieces_.size() > 1) piece.reserve(kPiece);
}

Array::Array(std::vector<Dimension> dimensions) : dimensions_(std::move(dimensions)) {
    if (dimensions_.empty()) RaiseRuntimeError(error_number::kSubscriptOutOfRange);
    std::size_t count = 1;
    for (const Dimension& dimension : dimensions_) {
        RequireSound(dimension);
        count *= static_cast<std::size_t>(dimension.count);
    }
    elements_.resize(count);
}

Array Array::List(std::vector<Value> items, std::int32_t lowerBound) {
    if (items.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        RaiseRuntimeError(error_number::kOverflow);
    }
    Array list({{lowerBound, 0}});
    list.dimensions_[0].count = static_cast<std::int32_t>(items.size());
    RequireSound(list.dimensions_[0]);
    list.elements_ = std::move(items);
    return list;
}

std::size_t Array::Offset(std::span<const std::int32_t> index) const {
    if (index.size() != dimensions_.size()) RaiseRuntimeError(error_number::kSubscriptOutOfRange);
    std::size_t offset = 0;
    for (std::size_t i = 0; i < index.size(); ++i) {
        const std::int64_t place = static_cast<std::int64_t>(index[i]) - dimensions_[i].lowerBound;
        if (place < 0 || place >= dimensions_[i].count) RaiseRuntimeError(error_number::kSubscriptOutOfRange);
        offset = offset * static_cast<std::size_t>(dimensions_[i].count) + static_cast<std::size_t>(place);
    }
    return offset;
}

}  // namespace kxjob

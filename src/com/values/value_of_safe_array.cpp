#include "com/values/value_of_safe_array.h"

#include <cstdint>
#include <vector>

#include "automation/runtime_error.h"
#include "com/errors/at_boundary.h"
#include "com/values/value_of_variant.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

/// The data of an array stays where it is while this lives.
class LockedArray {
public:
    explicit LockedArray(SAFEARRAY* array) : array_(array) { RequireSuccess(SafeArrayLock(array)); }
    LockedArray(const LockedArray&) = delete;
    LockedArray& operator=(const LockedArray&) = delete;
    ~LockedArray() { SafeArrayUnlock(array_); }

private:
    SAFEARRAY* array_;
};

std::vector<Array::Dimension> DimensionsOf(SAFEARRAY* array) {
    std::vector<Array::Dimension> dimensions(SafeArrayGetDim(array));
    for (std::size_t i = 0; i < dimensions.size(); ++i) {
        LONG lower = 0;
        LONG upper = 0;
        RequireSuccess(SafeArrayGetLBound(array, static_cast<UINT>(i + 1), &lower));
        RequireSuccess(SafeArrayGetUBound(array, static_cast<UINT>(i + 1), &upper));
        const std::int64_t count = std::int64_t{upper} - lower + 1;
        if (count > INT32_MAX) RaiseRuntimeError(error_number::kSubscriptOutOfRange);
        dimensions[i] = {lower, static_cast<std::int32_t>(count)};
    }
    return dimensions;
}

Value ElementAt(SAFEARRAY* array, VARTYPE type, LONG* index) {
    void* place = nullptr;
    RequireSuccess(SafeArrayPtrOfIndex(array, index, &place));
    if (type == VT_VARIANT) return ValueOf(*static_cast<VARIANT*>(place));
    VARIANT reference;
    reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
    reference.byref = place;
    return ValueOf(reference);
}

/// Moves `index` to the next element, the last index running fastest; false behind the last one.
bool Advance(std::vector<std::int32_t>& index, const std::vector<Array::Dimension>& dimensions) {
    for (std::size_t i = index.size(); i-- > 0;) {
        const std::int32_t last = dimensions[i].lowerBound + (dimensions[i].count - 1);
        if (index[i] < last) {
            ++index[i];
            return true;
        }
        index[i] = dimensions[i].lowerBound;
    }
    return false;
}

}  // namespace

Value ValueOfArray(SAFEARRAY* array) {
    if (array == nullptr || SafeArrayGetDim(array) == 0) {
        RaiseRuntimeError(error_number::kSubscriptOutOfRange);
    }
    VARTYPE type = VT_EMPTY;
    RequireSuccess(SafeArrayGetVartype(array, &type));
    const LockedArray lock(array);
    const std::vector<Array::Dimension> dimensions = DimensionsOf(array);
    Array copy(dimensions);
    if (copy.ElementCount() == 0) return copy;
    std::vector<std::int32_t> index;
    for (const Array::Dimension& dimension : dimensions) index.push_back(dimension.lowerBound);
    std::vector<LONG> place(index.size());
    do {
        place.assign(index.begin(), index.end());
        copy.At(index) = ElementAt(array, type, place.data());
    } while (Advance(index, dimensions));
    return copy;
}

}  // namespace kxjob

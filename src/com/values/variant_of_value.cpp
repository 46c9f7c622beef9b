#include "com/values/variant_of_value.h"

#include <cstdint>
#include <memory>
#include <new>
#include <vector>

#include "com/handles/text.h"
#include "com/late/late_component.h"
#include "kxjob/array.h"

namespace kxjob {
namespace {

/// A new array of variants; owned until it is in one itself.
class VariantArray {
public:
    explicit VariantArray(std::vector<SAFEARRAYBOUND> bounds)
        : array_(SafeArrayCreate(VT_VARIANT, static_cast<UINT>(bounds.size()), bounds.data())) {
        if (array_ == nullptr) throw std::bad_alloc();
    }
    VariantArray(const VariantArray&) = delete;
    VariantArray& operator=(const VariantArray&) = delete;
    ~VariantArray() { SafeArrayDestroy(array_); }

    /// All elements in memory, the first index running fastest.
    VARIANT* Elements() { return static_cast<VARIANT*>(array_->pvData); }

    Variant AsVariant() && {
        VARIANT variant;
        variant.vt = VT_ARRAY | VT_VARIANT;
        variant.parray = std::exchange(array_, nullptr);
        return Variant(variant);
    }

private:
    SAFEARRAY* array_;
};

Variant OfRows(const RowArray& rows) {
    const std::int32_t columns = rows.Columns();
    const std::int32_t count = rows.Rows();
    VariantArray array({{static_cast<ULONG>(columns), 0}, {static_cast<ULONG>(count), 0}});
    VARIANT* element = array.Elements();
    for (std::int32_t row = 0; row < count; ++row) {
        for (std::int32_t column = 0; column < columns; ++column) {
            *element++ = VariantOf(rows.Cell(column, row)).Release();
        }
    }
    return std::move(array).AsVariant();
}

/// How far apart in memory two elements are whose index differs by one, for each dimension.
std::vector<std::size_t> Strides(std::span<const Array::Dimension> dimensions) {
    std::vector<std::size_t> strides;
    std::size_t stride = 1;
    for (const Array::Dimension& dimension : dimensions) {
        strides.push_back(stride);
        stride *= static_cast<std::size_t>(dimension.count);
    }
    return strides;
}

Variant OfArray(const Array& values) {
    const auto dimensions = values.Dimensions();
    std::vector<SAFEARRAYBOUND> bounds;
    for (const Array::Dimension& dimension : dimensions) {
        bounds.push_back({static_cast<ULONG>(dimension.count), dimension.lowerBound});
    }
    VariantArray array(std::move(bounds));
    const std::vector<std::size_t> strides = Strides(dimensions);
    std::vector<std::int32_t> index(dimensions.size());
    for (const Value& value : values.Elements()) {  // the last index runs fastest
        std::size_t place = 0;
        for (std::size_t i = 0; i < index.size(); ++i)
            place += strides[i] * static_cast<std::size_t>(index[i]);
        array.Elements()[place] = VariantOf(value).Release();
        for (std::size_t i = index.size(); i-- > 0;) {
            if (++index[i] < dimensions[i].count) break;
            index[i] = 0;
        }
    }
    return std::move(array).AsVariant();
}

struct Converter {
    Variant operator()(std::monostate) const { return {}; }
    Variant operator()(Null) const { return Simple(VT_NULL); }
    Variant operator()(bool boolean) const {
        Variant variant = Simple(VT_BOOL);
        variant->boolVal = boolean ? VARIANT_TRUE : VARIANT_FALSE;
        return variant;
    }
    Variant operator()(std::int32_t number) const {
        Variant variant = Simple(VT_I4);
        variant->lVal = number;
        return variant;
    }
    Variant operator()(std::int64_t number) const {
        Variant variant = Simple(VT_I8);
        variant->llVal = number;
        return variant;
    }
    Variant operator()(double number) const {
        Variant variant = Simple(VT_R8);
        variant->dblVal = number;
        return variant;
    }
    Variant operator()(const std::string& text) const {
        Variant variant;
        variant->bstrVal = Bstr(text).Release();
        variant->vt = VT_BSTR;
        return variant;
    }
    Variant operator()(const std::shared_ptr<const RowArray>& rows) const { return OfRows(*rows); }
    Variant operator()(const std::shared_ptr<const Array>& array) const { return OfArray(*array); }
    Variant operator()(const ComponentRef& object) const {
        Variant variant;
        variant->pdispVal = DispatchOf(object).Release();
        variant->vt = VT_DISPATCH;
        return variant;
    }

    static Variant Simple(VARTYPE type) {
        Variant variant;
        variant->vt = type;
        return variant;
    }
};

}  // namespace

Variant VariantOf(const Value& value) {
    return value.Visit(Converter{});
}

}  // namespace kxjob

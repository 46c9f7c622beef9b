#include "value_json.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "kxjob/array.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

/// As many as automation's arrays may have; also keeps hostile nesting off the stack.
constexpr std::size_t kMostDimensions = 60;

using Index = std::vector<std::int32_t>;
using Shape = std::vector<Array::Dimension>;

Json RowsToJson(const RowArray& rows) {
    Json lists = Json::array();
    for (std::int32_t row = 0; row < rows.Rows(); ++row) {
        Json cells = Json::array();
        for (std::int32_t column = 0; column < rows.Columns(); ++column) {
            cells.push_back(ToJson(rows.Cell(column, row)));
        }
        lists.push_back(std::move(cells));
    }
    return {{"rows", std::move(lists)}};
}

/// The elements under the first indexes of an array.
Json ElementsToJson(const Array& array, Index& index) {
    if (index.size() == array.Dimensions().size()) return ToJson(array.At(index));
    const Array::Dimension dimension = array.Dimensions()[index.size()];
    Json items = Json::array();
    for (std::int32_t i = 0; i < dimension.count; ++i) {
        index.push_back(dimension.lowerBound + i);
        items.push_back(ElementsToJson(array, index));
        index.pop_back();
    }
    if (dimension.lowerBound == 0) return items;
    return {{"lower", dimension.lowerBound}, {"items", std::move(items)}};
}

bool IsBoundedList(const Json& json) {
    return json.is_object() && json.size() == 2 && json.contains("lower") && json.contains("items") &&
           json["items"].is_array();
}

bool IsList(const Json& json) {
    return json.is_array() || IsBoundedList(json);
}

const Json& ItemsOf(const Json& list) {
    return list.is_array() ? list : list["items"];
}

std::int32_t LowerBoundOf(const Json& list) {
    if (list.is_array()) return 0;
    const Value lower = FromJson(list["lower"]);
    if (!lower.IsInt32()) throw UsageError("the lower bound of an array is a whole number of 32 bits.");
    return lower.ToInt32();
}

/// The dimensions of the array that a list stands for: its own, then those that all its items have in common.
Shape ShapeOf(const Json& list, std::size_t depth) {
    if (depth == kMostDimensions) throw UsageError("arrays are nested at most 60 deep.");
    const Json& items = ItemsOf(list);
    Shape shape{{LowerBoundOf(list), static_cast<std::int32_t>(items.size())}};
    Shape common;
    for (const Json& item : items) {
        const Shape inner = IsList(item) ? ShapeOf(item, depth + 1) : Shape();
        if (&item == &items.front()) common = inner;
        if (inner != common) return shape;
    }
    shape.insert(shape.end(), common.begin(), common.end());
    return shape;
}

void Fill(Array& array, Index& index, const Json& list) {
    const std::int32_t lowerBound = array.Dimensions()[index.size()].lowerBound;
    std::int32_t place = 0;
    for (const Json& item : ItemsOf(list)) {
        index.push_back(lowerBound + place++);
        if (index.size() == array.Dimensions().size()) {
            array.At(index) = FromJson(item);
        } else {
            Fill(array, index, item);
        }
        index.pop_back();
    }
}

Array ArrayOf(Shape shape) {
    try {
        return Array(std::move(shape));
    } catch (const AutomationError&) {
        throw UsageError("the indexes of an array are whole numbers of 32 bits.");
    }
}

Value ListFromJson(const Json& list) {
    Array array = ArrayOf(ShapeOf(list, 0));
    Index index;
    Fill(array, index, list);
    return array;
}

Value NumberFromJson(const Json& json) {
    if (json.is_number_float()) return json.get<double>();
    if (json.is_number_unsigned() && json.get<std::uint64_t>() > std::numeric_limits<std::int64_t>::max()) {
        return json.get<double>();
    }
    const auto number = json.get<std::int64_t>();
    if (number < std::numeric_limits<std::int32_t>::min() ||
        number > std::numeric_limits<std::int32_t>::max()) {
        return number;
    }
    return static_cast<std::int32_t>(number);
}

}  // namespace

Json ToJson(const Value& value) {
    return value.Visit([](const auto& held) -> Json {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, std::monostate>) {
            return {{"empty", true}};
        } else if constexpr (std::is_same_v<T, Null>) {
            return nullptr;
        } else if constexpr (std::is_same_v<T, std::shared_ptr<const RowArray>>) {
            return RowsToJson(*held);
        } else if constexpr (std::is_same_v<T, std::shared_ptr<const Array>>) {
            Index index;
            return ElementsToJson(*held, index);
        } else if constexpr (std::is_same_v<T, ComponentRef>) {
            return {{"object", held == nullptr ? std::string("Nothing") : held->Name()}};
        } else {
            return held;
        }
    });
}

Json ToJson(const AutomationError& error) {
    return {{"number", error.Number()}, {"source", error.Source()}, {"description", error.Description()}};
}

Value FromJson(const Json& json) {
    if (json.is_null()) return Null();
    if (json.is_boolean()) return json.get<bool>();
    if (json.is_number()) return NumberFromJson(json);
    if (json.is_string()) return json.get<std::string>();
    if (IsList(json)) return ListFromJson(json);
    if (json == Json{{"empty", true}}) return {};
    throw UsageError(
        R"(a JSON object that stands for a value is {"lower":n,"items":[...]} or {"empty":true}.)");
}

Json ParseJson(const std::string& text) {
    Json json = Json::parse(text, nullptr, false);
    if (json.is_discarded()) throw UsageError("it is no JSON.");
    return json;
}

std::string OneLine(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace kxjob::command

#include "value_text.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "com/handles/text.h"
#include "com/handles/variant.h"

namespace kxjob::script_host {
namespace {

std::string Quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted.append({'\\', c});
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
            quoted += escape.data();
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

/// The shortest text that reads back as the same number; one without a fraction keeps ".0".
std::string NumberText(double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    std::string text(digits.data(), end);
    if (text.find_first_of(".en") == std::string::npos) text += ".0";
    return text;
}

std::string CellText(SAFEARRAY* array, std::vector<LONG> index) {
    Variant cell;
    VARTYPE kind = VT_EMPTY;
    if (FAILED(SafeArrayGetVartype(array, &kind)) || kind != VT_VARIANT) {
        throw std::invalid_argument("an array of other than variants");
    }
    if (FAILED(SafeArrayGetElement(array, index.data(), cell.Receive()))) {
        throw std::invalid_argument("an array element that cannot be read");
    }
    return ValueText(*cell);
}

struct Bounds {
    LONG lower = 0;
    LONG upper = -1;
};

Bounds BoundsOf(SAFEARRAY* array, UINT dimension) {
    Bounds bounds;
    SafeArrayGetLBound(array, dimension, &bounds.lower);
    SafeArrayGetUBound(array, dimension, &bounds.upper);
    return bounds;
}

template <typename Item>
std::string ListText(Bounds bounds, Item item) {
    std::string list = "[";
    for (LONG i = bounds.lower; i <= bounds.upper; ++i) {
        if (i != bounds.lower) list += ',';
        list += item(i);
    }
    return list + "]";
}

std::string ArrayText(SAFEARRAY* array) {
    const Bounds first = BoundsOf(array, 1);
    if (SafeArrayGetDim(array) == 1) {
        const std::string list = ListText(first, [&](LONG i) { return CellText(array, {i}); });
        if (first.lower == 0) return list;
        return "{\"lower\":" + std::to_string(first.lower) + ",\"items\":" + list + "}";
    }
    const Bounds rows = BoundsOf(array, 2);
    if (SafeArrayGetDim(array) != 2 || first.lower != 0 || rows.lower != 0) {
        throw std::invalid_argument("an array that is neither a list nor (column, row) from 0");
    }
    return "{\"rows\":" +
           ListText(rows,
                    [&](LONG row) {
                        return ListText(first, [&](LONG column) { return CellText(array, {column, row}); });
                    }) +
           "}";
}

}  // namespace

std::string ValueText(const VARIANT& value) {
    switch (value.vt) {
        case VT_EMPTY: return "{\"empty\":true}";
        case VT_NULL: return "null";
        case VT_BOOL: return value.boolVal == VARIANT_FALSE ? "false" : "true";
        case VT_I2: return std::to_string(value.iVal);
        case VT_I4: return std::to_string(value.lVal);
        case VT_I8: return std::to_string(value.llVal);
        case VT_R8: return NumberText(value.dblVal);
        case VT_BSTR: return Quoted(TextOf(value.bstrVal));
        case VT_ARRAY | VT_VARIANT: return ArrayText(value.parray);
        default: throw std::invalid_argument("a value of kind " + std::to_string(value.vt));
    }
}

}  // namespace kxjob::script_host

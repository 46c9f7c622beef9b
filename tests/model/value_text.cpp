#include "model/value_text.h"

#include <array>
#include <cstdio>

#include "kxjob/array.h"

namespace kxjob::model {
namespace {

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code >= 0x20 && code < 0x7F && character != '\\') {
            quoted += character;
            continue;
        }
        std::array<char, 8> escaped{};
        static_cast<void>(std::snprintf(escaped.data(), escaped.size(), "\\x%02X", code));
        quoted += escaped.data();
    }
    return quoted + "'";
}

}  // namespace

std::string ValueText(const Value& value) {
    if (value.IsEmpty()) return "Empty";
    if (value.IsNull()) return "NULL";
    if (value.IsBoolean()) return value == Value(true) ? "True" : "False";
    if (value.IsText()) return Quoted(value.Text());
    if (value.IsInt32()) return value.ToText();
    if (value.IsInt64()) return value.ToText() + "L";
    if (value.IsDouble()) {
        std::array<char, 40> text{};
        static_cast<void>(std::snprintf(text.data(), text.size(), "%.17gd", value.ToDouble()));
        return text.data();
    }
    if (value.IsGeneralArray()) return "{" + RowText(value.General().Elements()) + "}";
    return value.IsRowArray() ? std::to_string(value.Rows().Rows()) + " rows" : "an object";
}

std::string RowText(std::span<const Value> cells) {
    std::string text;
    for (const Value& cell : cells) text += (text.empty() ? "" : " | ") + ValueText(cell);
    return text;
}

}  // namespace kxjob::model

#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "kxjob/component.h"
#include "kxjob/export.h"

namespace kxjob {

class Array;
class RowArray;

/// The database NULL, as opposed to a value that was never set (Empty).
struct Null {
    friend bool operator==(const Null&, const Null&) = default;
};

/// One value of the automation object model: Empty, Null, Boolean, 32-bit or 64-bit whole number, double,
/// text (UTF-8), row array, general array or object. Arrays are shared and never change once they are in a
/// Value.
class KXJOB_EXPORT Value {
public:
    Value() = default;
    Value(Null null) : held_(null) {}
    template <std::same_as<bool> B>  // only a bool: a pointer must not become True
    Value(B truth) : held_(truth) {}
    Value(std::int32_t number) : held_(number) {}
    Value(std::int64_t number) : held_(number) {}
    Value(double number) : held_(number) {}
    Value(std::string text) : held_(std::move(text)) {}
    Value(std::string_view text) : held_(std::string(text)) {}
    Value(const char* text) : held_(std::string(text)) {}
    Value(RowArray rows);
    Value(Array array);
    Value(ComponentRef object) : held_(std::move(object)) {}

    bool IsEmpty() const { return std::holds_alternative<std::monostate>(held_); }
    bool IsNull() const { return std::holds_alternative<Null>(held_); }
    bool IsBoolean() const { return std::holds_alternative<bool>(held_); }
    bool IsInt32() const { return std::holds_alternative<std::int32_t>(held_); }
    bool IsInt64() const { return std::holds_alternative<std::int64_t>(held_); }
    bool IsDouble() const { return std::holds_alternative<double>(held_); }
    bool IsText() const { return std::holds_alternative<std::string>(held_); }
    bool IsObject() const { return std::holds_alternative<ComponentRef>(held_); }
    bool IsRowArray() const { return std::holds_alternative<RowsRef>(held_); }
    bool IsGeneralArray() const { return std::holds_alternative<ArrayRef>(held_); }
    /// An array of either kind.
    bool IsArray() const { return IsRowArray() || IsGeneralArray(); }

    /// The held alternative itself. Raises Type mismatch (0x800A000D) when the value is of another kind.
    const std::string& Text() const;
    const RowArray& Rows() const;
    const kxjob::Array& General() const;
    /// The held object. Raises Type mismatch for another kind, Object not set (0x800A005B) for no object.
    const ComponentRef& Object() const;

    /// Conversions as automation does them. Null raises Invalid use of Null (0x800A005E); an array, an object
    /// or a text that is no number raises Type mismatch (0x800A000D); what does not fit raises Overflow
    /// (0x800A0006). Empty is the empty text and 0; a Boolean is "True" or "False" and -1 or 0; a double is
    /// text of up to 15 significant digits and is rounded to the nearest even whole number.
    std::string ToText() const;
    /// The same for a piece of a longer text, to which Null adds nothing.
    std::string ToJoinedText() const { return IsNull() ? std::string() : ToText(); }
    std::int32_t ToInt32() const;
    double ToDouble() const;

    /// The same kind and the same content; objects are equal when they are the same object.
    KXJOB_EXPORT friend bool operator==(const Value& left, const Value& right);

    /// Calls `visitor` with the held alternative; Empty is `std::monostate`, arrays are shared pointers to
    /// const.
    template <typename Visitor>
    decltype(auto) Visit(Visitor&& visitor) const {
        return std::visit(std::forward<Visitor>(visitor), held_);
    }

private:
    using RowsRef = std::shared_ptr<const RowArray>;
    using ArrayRef = std::shared_ptr<const kxjob::Array>;

    std::variant<std::monostate, Null, bool, std::int32_t, std::int64_t, double, std::string, RowsRef,
                 ArrayRef, ComponentRef>
        held_;
};

/// A double as statements and log lines show it: up to 15 significant digits, "." whatever the locale, no
/// trailing zeros, an exponent only when it must be: 1, 0.5, 0.333333333333333, 1E+20.
KXJOB_EXPORT std::string DoubleText(double number);

}  // namespace kxjob

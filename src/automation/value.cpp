#include "kxjob/value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

#include "automation/runtime_error.h"
#include "kxjob/array.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

/// What a held alternative is as a number; texts are read whole, blanks around them do not count.
double NumberOf(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) RaiseRuntimeError(error_number::kTypeMismatch);
    const std::size_t last = text.find_last_not_of(" \t");
    const char* begin = text.data() + first;
    const char* const end = text.data() + last + 1;
    if (*begin == '+' && end - begin > 1 && begin[1] != '-') ++begin;
    double number = 0;
    const auto [stopped, problem] = std::from_chars(begin, end, number);
    if (problem == std::errc::result_out_of_range) RaiseRuntimeError(error_number::kOverflow);
    if (problem != std::errc() || stopped != end || !std::isfinite(number)) {
        RaiseRuntimeError(error_number::kTypeMismatch);
    }
    return number;
}

template <typename T>
inline constexpr bool kIsNumber =
    std::is_same_v<T, std::int32_t> || std::is_same_v<T, std::int64_t> || std::is_same_v<T, double>;

template <typename T>
const T& HeldOrMismatch(const T* held) {
    if (held == nullptr) RaiseRuntimeError(error_number::kTypeMismatch);
    return *held;
}

}  // namespace

Value::Value(RowArray rows) : held_(std::make_shared<const RowArray>(std::move(rows))) {}

Value::Value(kxjob::Array array) : held_(std::make_shared<const kxjob::Array>(std::move(array))) {}

const std::string& Value::Text() const {
    return HeldOrMismatch(std::get_if<std::string>(&held_));
}

const RowArray& Value::Rows() const {
    return *HeldOrMismatch(std::get_if<RowsRef>(&held_));
}

const kxjob::Array& Value::General() const {
    return *HeldOrMismatch(std::get_if<ArrayRef>(&held_));
}

const ComponentRef& Value::Object() const {
    const ComponentRef& object = HeldOrMismatch(std::get_if<ComponentRef>(&held_));
    if (object == nullptr) RaiseRuntimeError(error_number::kObjectNotSet);
    return object;
}

std::string Value::ToText() const {
    return Visit([](const auto& held) -> std::string {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, std::monostate>) {
            return {};
        } else if constexpr (std::is_same_v<T, Null>) {
            RaiseRuntimeError(error_number::kInvalidUseOfNull);
        } else if constexpr (std::is_same_v<T, bool>) {
            return held ? "True" : "False";
        } else if constexpr (std::is_same_v<T, double>) {
            return DoubleText(held);
        } else if constexpr (kIsNumber<T>) {
            return std::to_string(held);
        } else if constexpr (std::is_same_v<T, std::string>) {
            return held;
        } else {
            RaiseRuntimeError(error_number::kTypeMismatch);
        }
    });
}

double Value::ToDouble() const {
    return Visit([](const auto& held) -> double {
        using T = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<T, std::monostate>) {
            return 0;
        } else if constexpr (std::is_same_v<T, Null>) {
            RaiseRuntimeError(error_number::kInvalidUseOfNull);
        } else if constexpr (std::is_same_v<T, bool>) {
            return held ? -1 : 0;
        } else if constexpr (kIsNumber<T>) {
            return static_cast<double>(held);
        } else if constexpr (std::is_same_v<T, std::string>) {
            return NumberOf(held);
        } else {
            RaiseRuntimeError(error_number::kTypeMismatch);
        }
    });
}

std::int32_t Value::ToInt32() const {
    if (const auto* number = std::get_if<std::int32_t>(&held_)) return *number;
    const double nearest = std::nearbyint(ToDouble());
    // Written so that a NaN overflows too.
    if (!(nearest >= std::numeric_limits<std::int32_t>::min() &&
          nearest <= std::numeric_limits<std::int32_t>::max())) {
        RaiseRuntimeError(error_number::kOverflow);
    }
    return static_cast<std::int32_t>(nearest);
}

bool operator==(const Value& left, const Value& right) {
    if (left.held_.index() != right.held_.index()) return false;
    return left.Visit([&](const auto& held) {
        using T = std::decay_t<decltype(held)>;
        const T& other = std::get<T>(right.held_);
        if constexpr (std::is_same_v<T, Value::RowsRef> || std::is_same_v<T, Value::ArrayRef>) {
            return *held == *other;
        } else {
            return held == other;
        }
    });
}

std::string DoubleText(double number) {
    constexpr int kSignificantDigits = 15;
    if (number == 0) return "0";  // whatever its sign
    std::array<char, 32> buffer{};
    const auto [end, problem] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                              std::chars_format::general, kSignificantDigits);
    std::string text(buffer.data(), end);
    for (char& character : text) {
        if (character == 'e') character = 'E';
    }
    return text;
}

}  // namespace kxjob

#include "argument_kinds.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

#include "kxjob/automation_error.h"
#include "records/guid_text.h"
#include "usage_error.h"
#include "value_json.h"

namespace kxjob::command {
namespace {

/// Whether the whole text is one number of this type.
template <typename Number>
bool IsNumber(const std::string& text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [stopped, problem] = std::from_chars(text.data(), end, number);
    return problem == std::errc() && stopped == end;
}

bool EqualsIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

}  // namespace

void ReadArgument(const std::string& text, std::string& argument) {
    argument = text;
}

void ReadArgument(const std::string& text, std::int32_t& argument) {
    if (!IsNumber(text, argument)) throw UsageError("it must be a whole number that fits 32 bits.");
}

void ReadArgument(const std::string& text, double& argument) {
    if (!IsNumber(text, argument) || !std::isfinite(argument)) throw UsageError("it must be a number.");
}

void ReadArgument(const std::string& text, bool& argument) {
    const auto isOneOf = [&](auto... words) { return (EqualsIgnoringCase(text, words) || ...); };
    if (isOneOf("true", "yes", "1", "-1")) {
        argument = true;
    } else if (isOneOf("false", "no", "0")) {
        argument = false;
    } else {
        throw UsageError("it must be true or false.");
    }
}

void ReadArgument(const std::string& text, Value& argument) {
    const bool isJson = (text.starts_with('[') || text.starts_with('{')) && !IsGuid(text);
    argument = isJson ? FromJson(ParseJson(text)) : Value(text);
}

void ReadArgument(const std::string& text, Collection& argument) {
    const Json json = ParseJson(text);
    if (!json.is_object()) throw UsageError("it must be a JSON object.");
    try {
        for (const auto& [key, item] : json.items()) argument.Add(FromJson(item), key);
    } catch (const AutomationError&) {
        throw UsageError("two of its members have the same name; letter case does not count.");
    }
}

}  // namespace kxjob::command

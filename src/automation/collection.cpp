#include "kxjob/collection.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "automation/letter_case.h"
#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {

void Collection::Add(Value item, std::string_view key) {
    std::string folded = FoldedCase(key);
    if (folded.empty()) {
        entries_.push_back({std::move(item), {}});
        return;
    }
    if (byKey_.contains(folded)) RaiseRuntimeError(error_number::kDuplicateKey);
    const auto place = entries_.insert(entries_.end(), {std::move(item), folded});
    byKey_.emplace(std::move(folded), place);
}

const Value& Collection::Item(std::size_t index) const {
    if (index < 1 || index > entries_.size()) RaiseRuntimeError(error_number::kSubscriptOutOfRange);
    return std::next(entries_.begin(), static_cast<std::ptrdiff_t>(index - 1))->item;
}

const Value& Collection::Item(std::string_view key) const {
    return Find(key)->item;
}

bool Collection::Exists(std::string_view key) const {
    return byKey_.contains(FoldedCase(key));
}

void Collection::Remove(std::string_view key) {
    const auto removed = byKey_.extract(FoldedCase(key));
    if (removed.empty()) RaiseRuntimeError(error_number::kInvalidCall);
    entries_.erase(removed.mapped());
}

std::list<Collection::Entry>::iterator Collection::Find(std::string_view key) const {
    const auto found = byKey_.find(FoldedCase(key));
    if (found == byKey_.end()) RaiseRuntimeError(error_number::kInvalidCall);
    return found->second;
}

std::string Collection::Name() const {
    return "Collection";
}

std::span<const std::string_view> Collection::MemberNames() const {
    static constexpr std::array<std::string_view, 4> kNames = {"Count", "Add", "Item", "Remove"};
    return kNames;
}

Value Collection::Get(std::string_view property) {
    if (property == "Count") return static_cast<std::int32_t>(Count());
    return Component::Get(property);
}

Value Collection::Call(std::string_view method, std::span<const Value> arguments) {
    if (method == "Add") {
        RequireArguments(method, arguments, 2);
        Add(arguments[0], arguments[1].ToText());
        return {};
    }
    if (method == "Item") {
        RequireArguments(method, arguments, 1);
        if (arguments[0].IsText()) return Item(arguments[0].Text());
        const std::int32_t index = arguments[0].ToInt32();
        return Item(static_cast<std::size_t>(std::max(index, 0)));
    }
    if (method == "Remove") {
        RequireArguments(method, arguments, 1);
        Remove(arguments[0].ToText());
        return {};
    }
    return Component::Call(method, arguments);
}

}  // namespace kxjob

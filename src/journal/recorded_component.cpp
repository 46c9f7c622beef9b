#include "journal/recorded_component.h"

#include <optional>
#include <utility>
#include <vector>

#include "journal/connection_secrets.h"

namespace kxjob {
namespace {

/// The configuration document is a property of its helper; no other property holds a connection string.
Value ShownProperty(const Value& value) {
    return DocumentValueWithoutSecrets(value);
}

/// A method without result gives Empty.
std::optional<Value> ShownResult(const Value& result) {
    return result.IsEmpty() ? std::nullopt : std::optional(result);
}

/// Members that take a connection string take it first.
std::vector<Value> ShownArguments(std::span<const Value> arguments) {
    std::vector<Value> shown(arguments.begin(), arguments.end());
    if (!shown.empty()) shown.front() = ValueWithoutSecrets(shown.front());
    return shown;
}

}  // namespace

RecordedComponent::RecordedComponent(std::shared_ptr<Recorder> recorder, ComponentRef inner,
                                     std::string shownName)
    : Recorded(std::move(recorder), std::move(inner)), shownName_(std::move(shownName)) {}

Value RecordedComponent::Get(std::string_view property) {
    return Record(
        shownName_, std::string(property), {}, [&](Component& inner) { return inner.Get(property); },
        ShownProperty);
}

void RecordedComponent::Let(std::string_view property, const Value& value) {
    Record(shownName_, std::string(property), {value}, [&](Component& inner) { inner.Let(property, value); });
}

Value RecordedComponent::Call(std::string_view method, std::span<const Value> arguments) {
    return Record(
        shownName_, std::string(method), ShownArguments(arguments),
        [&](Component& inner) { return inner.Call(method, arguments); }, ShownResult);
}

}  // namespace kxjob

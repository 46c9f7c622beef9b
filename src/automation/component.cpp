#include "kxjob/component.h"

#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"
#include "kxjob/value.h"

namespace kxjob {

Component::~Component() = default;

Value Component::Get(std::string_view property) {
    RaiseUnknownMember(property);
}

void Component::Let(std::string_view property, const Value& /*value*/) {
    RaiseUnknownMember(property);
}

Value Component::Call(std::string_view method, std::span<const Value> /*arguments*/) {
    RaiseUnknownMember(method);
}

void Component::RaiseUnknownMember(std::string_view member) const {
    RaiseRuntimeError(error_number::kUnknownMember, Name() + "." + std::string(member));
}

void Component::RequireArguments(std::string_view method, std::span<const Value> arguments,
                                 std::size_t count) const {
    if (arguments.size() != count) {
        RaiseRuntimeError(error_number::kWrongArgumentCount, Name() + "." + std::string(method) + " takes " +
                                                                 std::to_string(count) + ", not " +
                                                                 std::to_string(arguments.size()));
    }
}

}  // namespace kxjob

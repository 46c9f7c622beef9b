#include "siblings/timer.h"

#include <array>

#include "kxjob/value.h"

namespace kxjob {

std::string Timer::Name() const {
    return "kxTimer_83.Timer";
}

std::span<const std::string_view> Timer::MemberNames() const {
    static constexpr std::array<std::string_view, 5> kNames = {"setModuleName", "logLevel", "moduleName",
                                                               "Start", "Duration"};
    return kNames;
}

Value Timer::Get(std::string_view property) {
    if (property == "logLevel") return logLevel_;
    if (property == "moduleName") return moduleName_;
    if (property != "Duration") RaiseUnknownMember(property);
    if (!start_) return 0.0;
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - *start_).count();
}

void Timer::Let(std::string_view property, const Value& value) {
    if (property != "logLevel") RaiseUnknownMember(property);
    logLevel_ = value.ToInt32();
}

Value Timer::Call(std::string_view method, std::span<const Value> arguments) {
    if (method == "setModuleName") {
        RequireArguments(method, arguments, 1);
        moduleName_ = arguments[0].ToText();
    } else if (method == "Start") {
        RequireArguments(method, arguments, 0);
        start_ = std::chrono::steady_clock::now();
    } else {
        RaiseUnknownMember(method);
    }
    return {};
}

}  // namespace kxjob

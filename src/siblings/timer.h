#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "kxjob/component.h"

namespace kxjob {

/// A stopwatch: method `Start`, property `Duration` in seconds since then, 0 before. It keeps the module name
/// (`setModuleName`) and the `logLevel` that its user gives it.
class Timer : public Component {
public:
    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Get(std::string_view property) override;
    void Let(std::string_view property, const Value& value) override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;

private:
    std::string moduleName_;
    std::int32_t logLevel_ = 0;
    std::optional<std::chrono::steady_clock::time_point> start_;
};

}  // namespace kxjob

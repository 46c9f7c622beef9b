#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace kxjob::testing_support {

/// Gives an environment variable a value, or none, for as long as it lives.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
        if (const char* before = std::getenv(name_.c_str())) before_ = before;
        Set(value);
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { Set(before_); }

private:
    /// Each platform defines it.
    void Set(const std::optional<std::string>& value);

    std::string name_;
    std::optional<std::string> before_;
};

}  // namespace kxjob::testing_support

#pragma once

#include "kxjob/component.h"

namespace kxjob {

/// Method `Init` (the empty text), property `RMConnectionDocument`: the text of the configuration file.
/// Raises 0x80040000 + 704 when there is none, saying where it was looked for.
class ConfigurationHelper : public Component {
public:
    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Get(std::string_view property) override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;
};

}  // namespace kxjob

#pragma once

#include <span>
#include <string>
#include <string_view>

#include "kxjob/automation_error.h"
#include "kxjob/component.h"
#include "kxjob/value.h"

namespace kxjob {

/// The pending error as the error-logging component sees it: properties Number, Source, Description.
class ErrorObject : public Component {
public:
    explicit ErrorObject(AutomationError error);

    /// "Err".
    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Get(std::string_view property) override;

private:
    AutomationError error_;
};

}  // namespace kxjob

#pragma once

#include <span>
#include <string>
#include <string_view>

#include "kxjob/component.h"
#include "kxjob/value.h"

namespace kxjob {

/// This library as its collaborators see it: properties Title, Major, Minor, Revision.
class ApplicationObject : public Component {
public:
    /// "Application".
    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Get(std::string_view property) override;
};

}  // namespace kxjob

#include "siblings/table_name_helper.h"

#include <algorithm>
#include <array>

#include "kxjob/value.h"

namespace kxjob {
namespace {

constexpr std::array<std::string_view, 4> kBaseNames{"job", "JobItem", "jobtask", "JobType"};

}  // namespace

std::string TableNameHelper::Name() const {
    return "TableNameHelper_83.TableNameHelper";
}

std::span<const std::string_view> TableNameHelper::MemberNames() const {
    return kBaseNames;
}

Value TableNameHelper::Get(std::string_view property) {
    if (std::find(kBaseNames.begin(), kBaseNames.end(), property) == kBaseNames.end())
        RaiseUnknownMember(property);
    return property;
}

}  // namespace kxjob

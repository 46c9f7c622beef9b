#include "siblings/table_name_helper.h"

#include <algorithm>
#include <array>

#include "kxjob/value.h"

namespace kxjob {

std::string TableNameHelper::Name() const {
    return "TableNameHelper_83.TableNameHelper";
}

Value TableNameHelper::Get(std::string_view property) {
    constexpr std::array<std::string_view, 4> kBaseNames{"job", "JobItem", "jobtask", "JobType"};
    if (std::find(kBaseNames.begin(), kBaseNames.end(), property) == kBaseNames.end())
        RaiseUnknownMember(property);
    return property;
}

}  // namespace kxjob

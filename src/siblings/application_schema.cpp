#include "siblings/application_schema.h"

#include <array>
#include <utility>
#include <vector>

#include "defaults/store/optional_table.h"
#include "kxjob/array.h"

namespace kxjob {

ApplicationSchema::ApplicationSchema(std::shared_ptr<SessionCache> sessions)
    : sessions_(std::move(sessions)) {}

std::string ApplicationSchema::Name() const {
    return "ApplicationSchema_83.Schema";
}

std::span<const std::string_view> ApplicationSchema::MemberNames() const {
    static constexpr std::array<std::string_view, 1> kNames = {"ListOfContainerSubSystems"};
    return kNames;
}

Value ApplicationSchema::Call(std::string_view method, std::span<const Value> arguments) {
    if (method != "ListOfContainerSubSystems") RaiseUnknownMember(method);
    RequireArguments(method, arguments, 3);
    return ListOfContainerSubSystems(arguments[0].ToText(), arguments[2].ToText());
}

Value ApplicationSchema::ListOfContainerSubSystems(const std::string& connectionString,
                                                   const std::string& qualifier) {
    guard_.CheckParameter(qualifier, "NameQualifier");
    const Value found =
        QueryOptionalTable(*sessions_, connectionString,
                           "SELECT subsystemid FROM " + qualifier + "subsystem ORDER BY subsystemid");
    std::vector<Value> names;
    if (found.IsRowArray()) {
        for (std::int32_t row = 0; row < found.Rows().Rows(); ++row) {
            names.emplace_back(found.Rows().Cell(0, row).ToText());
        }
    }
    return Array::List(std::move(names));
}

}  // namespace kxjob

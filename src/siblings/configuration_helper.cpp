#include "siblings/configuration_helper.h"

#include <array>
#include <optional>

#include "defaults/configuration/configuration_error.h"
#include "defaults/configuration/configuration_file.h"
#include "kxjob/value.h"

namespace kxjob {
namespace {

[[noreturn]] void RaiseNoConfiguration() {
    std::string places;
    for (const std::string& place : ConfigurationPlaces()) {
        if (!places.empty()) places += ", ";
        places += place;
    }
    RaiseConfigurationError("There is no configuration file; looked for " + places);
}

}  // namespace

std::string ConfigurationHelper::Name() const {
    return "cfgApiCom_83.ComVTLConfigHelper";
}

std::span<const std::string_view> ConfigurationHelper::MemberNames() const {
    static constexpr std::array<std::string_view, 2> kNames = {"Init", "RMConnectionDocument"};
    return kNames;
}

Value ConfigurationHelper::Get(std::string_view property) {
    if (property != "RMConnectionDocument") RaiseUnknownMember(property);
    std::optional<std::string> text = ConfigurationText();
    if (!text) RaiseNoConfiguration();
    return *std::move(text);
}

Value ConfigurationHelper::Call(std::string_view method, std::span<const Value> arguments) {
    if (method != "Init") RaiseUnknownMember(method);
    RequireArguments(method, arguments, 1);
    return {};
}

}  // namespace kxjob

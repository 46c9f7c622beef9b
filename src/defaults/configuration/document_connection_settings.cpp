#include "defaults/configuration/document_connection_settings.h"

#include <optional>

#include "defaults/configuration/configuration_error.h"
#include "defaults/configuration/whole_number.h"

namespace kxjob {

void DocumentConnectionSettings::LoadFromText(const std::string& text) {
    document_ = ConfigurationDocument(text);
}

std::string DocumentConnectionSettings::ADOConnectionString() {
    std::optional<std::string> connectionString = document_.Find("ADOConnectionString");
    if (!connectionString)
        RaiseConfigurationError("The configuration names no connection: it has no ADOConnectionString");
    return *std::move(connectionString);
}

Value DocumentConnectionSettings::Provider() {
    const std::optional<std::string> text = document_.Find("Provider");
    if (!text) return {};
    const std::optional<std::int32_t> number = WholeNumber(*text);
    if (!number) RaiseConfigurationError("The Provider of the configuration is no whole number");
    return *number;
}

std::string DocumentConnectionSettings::NameSpaceQualifier() {
    return document_.Find("NameSpaceQualifier").value_or("");
}

}  // namespace kxjob

#include "kxjob/configured_connection.h"

#include "defaults/configuration/configuration_file.h"
#include "defaults/configuration/document_connection_settings.h"

namespace kxjob {

StoreConnection ConfiguredConnection() {
    DocumentConnectionSettings settings;
    settings.LoadFromText(ConfigurationText().value_or(""));
    return {settings.ADOConnectionString(), settings.Provider().ToInt32(), settings.NameSpaceQualifier()};
}

}  // namespace kxjob

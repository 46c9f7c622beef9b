#pragma once

#include <string>

#include "collaborators/connection_settings.h"
#include "defaults/configuration/configuration_document.h"

namespace kxjob {

/// The items `ADOConnectionString`, `Provider` and `NameSpaceQualifier` of a configuration document. Raises
/// 0x80040000 + 704 for a document that cannot be understood, that names no connection, or whose provider is
/// no whole number.
class DocumentConnectionSettings : public ConnectionSettings {
public:
    void LoadFromText(const std::string& text) override;
    std::string ADOConnectionString() override;
    Value Provider() override;
    std::string NameSpaceQualifier() override;

private:
    ConfigurationDocument document_;
};

}  // namespace kxjob

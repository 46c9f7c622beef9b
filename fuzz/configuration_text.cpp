// A configuration document of any bytes is read or refused by number; what it says is found again under every
// key, and the same document written anew says the same.

#include "defaults/configuration/configuration_document.h"
#include "defaults/configuration/default_settings.h"
#include "defaults/configuration/document_connection_settings.h"
#include "defaults/configuration/known_keys.h"
#include "kxjob/automation_error.h"
#include "support/fuzz_input.h"

namespace {

using kxjob::fuzz::Require;

std::string WrittenAnew(const kxjob::ConfigurationDocument& document) {
    std::string text = "\n";  // a byte order mark at the begin of a key is none
    for (const std::string& key : document.Keys()) {
        text.append(key).append("=").append(document.Find(key).value_or("")).append("\r\n");
    }
    return text;
}

void UseSettings(const kxjob::ConfigurationDocument& document, const std::string& text) {
    const kxjob::DefaultSettings settings(document);
    static_cast<void>(settings.LogFile());
    static_cast<void>(settings.ComponentVersion());
    static_cast<void>(settings.ComponentCommand("Some.Component"));
    static_cast<void>(settings.ComponentLibrary("Some.Component"));
    kxjob::DocumentConnectionSettings connection;
    connection.LoadFromText(text);
    static_cast<void>(connection.NameSpaceQualifier());
    static_cast<void>(connection.Provider());
    static_cast<void>(settings.LogLevel());
    Require(!connection.ADOConnectionString().empty(), "a connection string is never empty");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const kxjob::ConfigurationDocument document(text);
        const std::string anew = WrittenAnew(document);
        const kxjob::ConfigurationDocument again(anew);
        Require(document.Keys() == again.Keys(), "the keys are the same when written anew");
        Require(WrittenAnew(again) == anew, "the values are the same when written anew");
        UseSettings(document, text);
    } catch (const kxjob::AutomationError& error) {
        Require(error.Number() == kxjob::error_number::kConnectionFailed, "a refusal has the one number");
        Require(error.Description().size() < 300, "a refusal does not hold the document");
    }
    return 0;
}

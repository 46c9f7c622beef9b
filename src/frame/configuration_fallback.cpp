#include "frame/frame.h"
#include "kxjob/job_helper.h"

namespace kxjob {

std::shared_ptr<ConnectionSettings> JobHelper::RMConnectionDocument() {
    return InFrame("RMConnectionDocument", {}, [&](Frame& frame) {
        if (document_ == nullptr) {
            const LateObject helper = frame.CreateObject("cfgApiCom_83.ComVTLConfigHelper");
            helper.Call("Init", {""});
            document_ = frame.NewConnectionSettings();
            const std::string text = helper.Get("RMConnectionDocument").ToText();
            frame.UseObject(document_).LoadFromText(text);
        }
        return document_;
    });
}

// The replacement is whole: an argument that was given is overwritten too.
void JobHelper::UseConfigurationIfIncomplete(Frame& frame, std::string& ConnectionString,
                                             DataStoreProvider& Provider, std::string& NameQualifier) {
    if (!ConnectionString.empty() && !NameQualifier.empty()) return;
    const std::shared_ptr<ConnectionSettings> document = frame.Use(*this).RMConnectionDocument();
    ConnectionString = frame.UseObject(document).ADOConnectionString();
    Provider = frame.UseObject(document).Provider().ToInt32();
    NameQualifier = frame.UseObject(document).NameSpaceQualifier();
}

}  // namespace kxjob

#include "frame/frame.h"
#include "kxjob/job_helper.h"

namespace kxjob {

std::string JobHelper::JobTableCreationScript(Collection& providerOptions, DataStoreProvider Provider,
                                              std::string NameQualifier) {
    const ArgumentList given = {ByReference("providerOptions", providerOptions),
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier}};
    return InFrame("JobTableCreationScript", given, [&](Frame& frame) {
        frame.CheckParameter(NameQualifier, "NameQualifier");
        return frame.GetScript(providerOptions, Provider, NameQualifier, "JobTablesDDL");
    });
}

}  // namespace kxjob

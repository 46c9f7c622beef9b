#include "frame/frame.h"
#include "kxjob/job_helper.h"

namespace kxjob {

// The provider is not handed on: the history component finds the engine by the connection alone.
void JobHelper::piAdminHistoryWrite(std::string ConnectionString, DataStoreProvider Provider,
                                    std::string NameQualifier, std::string ActionCode, std::string Detail) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"ActionCode", ActionCode},
                                {"Detail", Detail}};
    return InFrame("piAdminHistoryWrite", given, [&](Frame& frame) {
        const LateObject admin = frame.CreateVersioned("AppModelAdmin_%v.Admin");
        admin.Call("AdminHistoryWrite", {ConnectionString, NameQualifier, ActionCode, Detail});
    });
}

}  // namespace kxjob

#include "siblings/stand_ins.h"

#include <array>

#include "siblings/app_model_admin.h"
#include "siblings/application_schema.h"
#include "siblings/configuration_helper.h"
#include "siblings/content_exec.h"
#include "siblings/debug_tools.h"
#include "siblings/table_name_helper.h"
#include "siblings/timer.h"

namespace kxjob {
namespace {

template <typename T>
ComponentRef Simple(const StandInParts& /*parts*/) {
    return std::make_shared<T>();
}

template <typename T>
ComponentRef OnStore(const StandInParts& parts) {
    return std::make_shared<T>(parts.sessions);
}

template <typename T>
ComponentRef WithLog(const StandInParts& parts) {
    return std::make_shared<T>(parts.log);
}

constexpr std::array kStandIns = {
    StandIn{"TableNameHelper_83.TableNameHelper", Simple<TableNameHelper>},
    StandIn{"ApplicationSchema_83.Schema", OnStore<ApplicationSchema>},
    StandIn{"AppModelAdmin_83.Admin", OnStore<AppModelAdmin>},
    StandIn{"ContentExecHelper_83.ContentExec", OnStore<ContentExec>},
    StandIn{"kxTimer_83.Timer", Simple<Timer>},
    StandIn{"DebugTools_83.Helper", WithLog<DebugTools>},
    StandIn{"cfgApiCom_83.ComVTLConfigHelper", Simple<ConfigurationHelper>},
};

}  // namespace

std::span<const StandIn> StandIns() {
    return kStandIns;
}

}  // namespace kxjob

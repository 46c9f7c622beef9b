#include "siblings/stand_ins.h"

#include "siblings/app_model_admin.h"
#include "siblings/application_schema.h"
#include "siblings/configuration_helper.h"
#include "siblings/content_exec.h"
#include "siblings/debug_tools.h"
#include "siblings/table_name_helper.h"
#include "siblings/timer.h"

namespace kxjob {

void AddStandIns(ComponentCatalog& catalog, const std::shared_ptr<SessionCache>& sessions,
                 const std::shared_ptr<TraceLog>& log) {
    catalog.AddStandIn("TableNameHelper_83.TableNameHelper",
                       [] { return std::make_shared<TableNameHelper>(); });
    catalog.AddStandIn("ApplicationSchema_83.Schema",
                       [sessions] { return std::make_shared<ApplicationSchema>(sessions); });
    catalog.AddStandIn("AppModelAdmin_83.Admin",
                       [sessions] { return std::make_shared<AppModelAdmin>(sessions); });
    catalog.AddStandIn("ContentExecHelper_83.ContentExec",
                       [sessions] { return std::make_shared<ContentExec>(sessions); });
    catalog.AddStandIn("kxTimer_83.Timer", [] { return std::make_shared<Timer>(); });
    catalog.AddStandIn("DebugTools_83.Helper", [log] { return std::make_shared<DebugTools>(log); });
    catalog.AddStandIn("cfgApiCom_83.ComVTLConfigHelper",
                       [] { return std::make_shared<ConfigurationHelper>(); });
}

}  // namespace kxjob

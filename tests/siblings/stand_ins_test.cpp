#include "siblings/stand_ins.h"

#include <gtest/gtest.h>

#include <memory>

#include "defaults/components/registry_object_factory.h"
#include "defaults/system/file_trace_log.h"

namespace kxjob {
namespace {

TEST(StandIns, AreAllThereUnderTheirOwnNames) {
    auto catalog = std::make_shared<ComponentCatalog>(DefaultSettings(ConfigurationDocument()));
    AddStandIns(*catalog, std::make_shared<SessionCache>(), std::make_shared<FileTraceLog>("", 2));
    const char* const progIds[] = {"TableNameHelper_83.TableNameHelper",
                                   "ApplicationSchema_83.Schema",
                                   "AppModelAdmin_83.Admin",
                                   "ContentExecHelper_83.ContentExec",
                                   "kxTimer_83.Timer",
                                   "DebugTools_83.Helper",
                                   "cfgApiCom_83.ComVTLConfigHelper"};
    RegistryObjectFactory factory(catalog);
    for (const char* progId : progIds) EXPECT_EQ(factory.CreateVersioned(progId)->Name(), progId);
}

}  // namespace
}  // namespace kxjob

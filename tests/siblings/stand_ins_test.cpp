#include "siblings/stand_ins.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "defaults/system/file_trace_log.h"

namespace kxjob {
namespace {

TEST(StandIns, AreAllThereUnderTheirOwnNames) {
    const StandInParts parts{std::make_shared<SessionCache>(), std::make_shared<FileTraceLog>("", 2)};
    std::vector<std::string> progIds;
    for (const StandIn& standIn : StandIns()) {
        EXPECT_EQ(standIn.create(parts)->Name(), standIn.progId);
        progIds.emplace_back(standIn.progId);
    }
    EXPECT_EQ(progIds, (std::vector<std::string>{"TableNameHelper_83.TableNameHelper",
                                                 "ApplicationSchema_83.Schema", "AppModelAdmin_83.Admin",
                                                 "ContentExecHelper_83.ContentExec", "kxTimer_83.Timer",
                                                 "DebugTools_83.Helper", "cfgApiCom_83.ComVTLConfigHelper"}));
}

TEST(StandIns, TellTheMembersThatTheyHave) {
    const StandInParts parts{std::make_shared<SessionCache>(), std::make_shared<FileTraceLog>("", 2)};
    for (const StandIn& standIn : StandIns()) {
        EXPECT_FALSE(standIn.create(parts)->MemberNames().empty()) << standIn.progId;
    }
}

}  // namespace
}  // namespace kxjob

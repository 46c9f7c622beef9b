#include "faults/store_use.h"

#include <map>
#include <string>

namespace kxjob::testing_support {

StoreUse StoreUses::Of(const JournalEvent& call) {
    static const std::map<std::string, StoreUse> uses{
        {"DataAccess.Execute", StoreUse::Writes},
        {"DataAccess.WriteLongText", StoreUse::Writes},
        {"DataAccess.Query", StoreUse::Reads},
        {"BatchSqlExecutor.Flush", StoreUse::Writes},
        {"SystemFlagReader.ReadFlag", StoreUse::Reads},
        {"ApplicationSchema_%v.Schema.ListOfContainerSubSystems", StoreUse::Reads},
        {"AppModelAdmin_%v.Admin.ApplicationStateReadGUID", StoreUse::Reads},
        {"AppModelAdmin_%v.Admin.AdminHistoryWrite", StoreUse::Writes},
        {"ContentExecHelper_%v.ContentExec.ContentBlobUpdate", StoreUse::Writes},
    };
    const std::string name = call.object + "." + call.operation;
    // The executor sends a group when it is full.
    if (name == "BatchSqlExecutor.Add") return ++added_ % 100 == 0 ? StoreUse::Writes : StoreUse::None;
    const auto found = uses.find(name);
    return found == uses.end() ? StoreUse::None : found->second;
}

}  // namespace kxjob::testing_support

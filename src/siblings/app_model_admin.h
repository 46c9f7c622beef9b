#pragma once

#include <memory>

#include "defaults/store/session_cache.h"
#include "defaults/system/process_environment_info.h"
#include "defaults/system/random_guid_service.h"
#include "defaults/system/system_time_service.h"
#include "defaults/text/standard_input_guard.h"
#include "defaults/text/standard_sql_formatter.h"
#include "kxjob/component.h"

namespace kxjob {

/// The administration history and the application states of a container, in its tables `adminhistory` and
/// `applicationstate`.
///
/// `AdminHistoryWrite` (connection string, qualifier, action code, detail) adds an entry with a new GUID, the
/// time and the user; fails when there is no such table. `ApplicationStateReadGUID` (connection string,
/// qualifier, state name) gives the state's GUID, or the null GUID when the table or the state is not there.
class AppModelAdmin : public Component {
public:
    explicit AppModelAdmin(std::shared_ptr<SessionCache> sessions);

    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;

private:
    void AdminHistoryWrite(const std::string& connectionString, const std::string& qualifier,
                           const std::string& actionCode, const std::string& detail);
    std::string ApplicationStateReadGuid(const std::string& connectionString, const std::string& qualifier,
                                         const std::string& state);

    std::shared_ptr<SessionCache> sessions_;
    StandardInputGuard guard_;
    StandardSqlFormatter formatter_;
    RandomGuidService guids_;
    SystemTimeService times_;
    ProcessEnvironmentInfo environment_;
};

}  // namespace kxjob

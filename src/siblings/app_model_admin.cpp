#include "siblings/app_model_admin.h"

#include <array>
#include <utility>

#include "defaults/store/optional_table.h"
#include "kxjob/array.h"

namespace kxjob {

AppModelAdmin::AppModelAdmin(std::shared_ptr<SessionCache> sessions) : sessions_(std::move(sessions)) {}

std::string AppModelAdmin::Name() const {
    return "AppModelAdmin_83.Admin";
}

std::span<const std::string_view> AppModelAdmin::MemberNames() const {
    static constexpr std::array<std::string_view, 2> kNames = {"AdminHistoryWrite",
                                                               "ApplicationStateReadGUID"};
    return kNames;
}

Value AppModelAdmin::Call(std::string_view method, std::span<const Value> arguments) {
    if (method == "AdminHistoryWrite") {
        RequireArguments(method, arguments, 4);
        AdminHistoryWrite(arguments[0].ToText(), arguments[1].ToText(), arguments[2].ToText(),
                          arguments[3].ToText());
        return {};
    }
    if (method == "ApplicationStateReadGUID") {
        RequireArguments(method, arguments, 3);
        return ApplicationStateReadGuid(arguments[0].ToText(), arguments[1].ToText(), arguments[2].ToText());
    }
    RaiseUnknownMember(method);
}

void AppModelAdmin::AdminHistoryWrite(const std::string& connectionString, const std::string& qualifier,
                                      const std::string& actionCode, const std::string& detail) {
    guard_.CheckParameter(qualifier, "NameQualifier");
    const std::string user = environment_.FirstUserText() + "\\" + environment_.SecondUserText();
    std::string sql = "INSERT INTO " + qualifier + "adminhistory";
    sql += " (historyid, writtendt, actioncode, detail, usercontext) VALUES (";
    sql += formatter_.FormatGuid(guids_.NewGuid()) + ", ";
    sql += formatter_.FormatValue(times_.NowISODateTime()) + ", ";
    sql += formatter_.FormatValue(actionCode) + ", ";
    sql += formatter_.FormatValue(detail) + ", ";
    sql += formatter_.FormatValue(user) + ")";
    sessions_->Use(connectionString, [&](Session& session) { session.Execute(sql); });
}

std::string AppModelAdmin::ApplicationStateReadGuid(const std::string& connectionString,
                                                    const std::string& qualifier, const std::string& state) {
    guard_.CheckParameter(qualifier, "NameQualifier");
    std::string sql = "SELECT stateguid FROM " + qualifier + "applicationstate";
    sql += " WHERE stateid = " + formatter_.FormatValue(state);
    const Value found = QueryOptionalTable(*sessions_, connectionString, sql);
    if (!found.IsRowArray() || found.Rows().Cell(0, 0).IsNull()) return guids_.NullGuid();
    return found.Rows().Cell(0, 0).ToText();
}

}  // namespace kxjob

#include "siblings/content_exec.h"

#include <array>
#include <utility>

#include "defaults/text/storable_text.h"
#include "kxjob/value.h"

namespace kxjob {

ContentExec::ContentExec(std::shared_ptr<SessionCache> sessions) : sessions_(std::move(sessions)) {}

std::string ContentExec::Name() const {
    return "ContentExecHelper_83.ContentExec";
}

std::span<const std::string_view> ContentExec::MemberNames() const {
    static constexpr std::array<std::string_view, 1> kNames = {"ContentBlobUpdate"};
    return kNames;
}

Value ContentExec::Call(std::string_view method, std::span<const Value> arguments) {
    if (method != "ContentBlobUpdate") RaiseUnknownMember(method);
    RequireArguments(method, arguments, 8);
    const std::string connectionString = arguments[0].ToText();
    const std::string qualifier = arguments[2].ToText();
    const std::string table = qualifier + arguments[3].ToText();
    const std::string keyColumn = arguments[4].ToText();
    const std::string keyValue = arguments[5].ToText();
    const std::string column = arguments[6].ToText();
    const std::string text = arguments[7].ToText();
    guard_.CheckParameter(qualifier, "NameQualifier");
    guard_.CheckParameter(table, "table name");
    guard_.CheckParameter(keyColumn, "key column");
    guard_.CheckParameter(column, "column");
    RequireStorable(keyValue);
    RequireStorable(text);
    sessions_->Use(connectionString, [&](Session& session) {
        session.WriteLongText(table, keyColumn, keyValue, column, text);
    });
    return {};
}

}  // namespace kxjob

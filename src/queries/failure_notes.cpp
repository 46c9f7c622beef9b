#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/job_helper.h"
#include "store/sql_text.h"
#include "store/table_names.h"

namespace kxjob {
namespace {

constexpr const char* kBlankLine = "\r\n\r\n";

/// What stands ahead of each note: when, and who is running.
std::string FailureBlock(Frame& frame) {
    const std::shared_ptr<EnvironmentInfo> environment = frame.NewEnvironmentInfo();
    std::string block = frame.NowISODateTime() + kBlankLine;
    block += "Machine details: " + frame.UseObject(environment).FirstMachineText();
    block += "\\" + frame.UseObject(environment).SecondMachineText() + kBlankLine;
    block += "User details: " + frame.UseObject(environment).FirstUserText();
    block += "\\" + frame.UseObject(environment).SecondUserText() + kBlankLine;
    block += "Process ID / Thread ID: " + std::to_string(frame.UseObject(environment).ProcessId());
    block += " / " + std::to_string(frame.UseObject(environment).ThreadId()) + kBlankLine;
    return block;
}

bool HoldsOnlyBlanks(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

/// One kind of row that carries a failure note.
struct NotedRow {
    const char* table;
    const char* keyColumn;
    std::int32_t notFoundError;
    const char* notFoundText;
};

constexpr NotedRow kNotedJob{"job", "jobguid", 751, "Unable to find Job "};
constexpr NotedRow kNotedJobItem{"JobItem", "jobitemguid", 752, "Unable to find Job Item "};

void AppendFailureNote(Frame& frame, const TableNames& tables, const NotedRow& row,
                       const std::string& connectionString, DataStoreProvider provider,
                       const std::string& nameQualifier, const std::string& key,
                       const std::string& additionalNote) {
    SqlText sql;
    sql << "SELECT failurenote FROM " << nameQualifier << tables.Base(row.table);
    sql << " WHERE " << row.keyColumn << " = " << frame.FormatGuid(key);
    const Value rows = frame.Query(connectionString, provider, sql, false);
    if (rows.IsEmpty()) frame.Raise(row.notFoundError, row.notFoundText + key);

    const std::string block = FailureBlock(frame);
    const std::string oldNote = frame.Use(rows).Rows().Cell(0, 0).ToJoinedText();
    std::string newNote = HoldsOnlyBlanks(oldNote) ? std::string() : oldNote + kBlankLine;
    newNote += block + additionalNote;

    const LateObject content = frame.CreateVersioned("ContentExecHelper_%v.ContentExec");
    content.Call("ContentBlobUpdate", {connectionString, provider, nameQualifier, tables.Base(row.table),
                                       row.keyColumn, key, "failurenote", newNote});
}

}  // namespace

void JobHelper::AppendJobFailureNote(std::string ConnectionString, DataStoreProvider Provider,
                                     std::string NameQualfier, std::string JobGUID,
                                     std::string AdditionalNote) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualfier", NameQualfier},
                                {"JobGUID", JobGUID},
                                {"AdditionalNote", AdditionalNote}};
    return InFrame("AppendJobFailureNote", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualfier);
        frame.CheckParameter(JobGUID, "JobGUID");
        frame.CheckParameter(NameQualfier, "NameQualifier");
        AppendFailureNote(frame, tables, kNotedJob, ConnectionString, Provider, NameQualfier, JobGUID,
                          AdditionalNote);
    });
}

void JobHelper::AppendJobItemFailureNote(std::string ConnectionString, DataStoreProvider Provider,
                                         std::string NameQualfier, std::string JobItemGUID,
                                         std::string AdditionalNote) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualfier", NameQualfier},
                                {"JobItemGUID", JobItemGUID},
                                {"AdditionalNote", AdditionalNote}};
    return InFrame("AppendJobItemFailureNote", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualfier);
        frame.CheckParameter(NameQualfier, "NameQualifier");
        frame.CheckParameter(JobItemGUID, "JobItemGUID");
        AppendFailureNote(frame, tables, kNotedJobItem, ConnectionString, Provider, NameQualfier, JobItemGUID,
                          AdditionalNote);
    });
}

}  // namespace kxjob

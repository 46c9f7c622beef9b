#include "automation/runtime_error.h"
#include "collaborators/this_thread.h"
#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/caller_texts.h"
#include "kxjob/job_helper.h"
#include "store/sql_text.h"
#include "store/table_names.h"

namespace kxjob {
namespace {

constexpr const char* kBlankLine = "\r\n\r\n";

/// When, and who is running: what stands ahead of each note.
struct Circumstances {
    std::string time;
    std::string machine;
    std::string user;
    std::string ids;
};

Circumstances CircumstancesOf(Frame& frame) {
    const std::shared_ptr<EnvironmentInfo> environment = frame.NewEnvironmentInfo();
    Circumstances now;
    now.time = frame.NowISODateTime();
    now.machine = frame.UseObject(environment).FirstMachineText();
    now.machine += "\\" + frame.UseObject(environment).SecondMachineText();
    now.user = frame.UseObject(environment).FirstUserText();
    now.user += "\\" + frame.UseObject(environment).SecondUserText();
    now.ids = std::to_string(frame.UseObject(environment).ProcessId());
    now.ids += " / " + std::to_string(frame.UseObject(environment).ThreadId());
    return now;
}

bool HoldsOnlyBlanks(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

std::string NoteBehind(const std::string& oldNote, const Circumstances& now,
                       const std::string& additionalNote) {
    std::string note = HoldsOnlyBlanks(oldNote) ? std::string() : oldNote + kBlankLine;
    note += now.time + kBlankLine;
    note += "Machine details: " + now.machine + kBlankLine;
    note += "User details: " + now.user + kBlankLine;
    note += "Process ID / Thread ID: " + now.ids + kBlankLine;
    return note + additionalNote;
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

    const Circumstances now = CircumstancesOf(frame);
    const std::string oldNote = frame.Use(rows).Rows().Cell(0, 0).ToJoinedText();
    const std::string newNote = NoteBehind(oldNote, now, additionalNote);

    const LateObject content = frame.CreateVersioned("ContentExecHelper_%v.ContentExec");
    content.Call("ContentBlobUpdate", {connectionString, provider, nameQualifier, tables.Base(row.table),
                                       row.keyColumn, key, "failurenote", newNote});
}

}  // namespace

std::string FailureNote(const std::string& oldNote, const std::string& additionalNote) {
    ThreadCollaborators& thread = ThisThread();
    const std::shared_ptr<EnvironmentInfo> environment = thread.Factory().MakeEnvironmentInfo();
    if (environment == nullptr) RaiseRuntimeError(error_number::kObjectNotSet);
    const Circumstances now{
        thread.Times().NowISODateTime(),
        environment->FirstMachineText() + "\\" + environment->SecondMachineText(),
        environment->FirstUserText() + "\\" + environment->SecondUserText(),
        std::to_string(environment->ProcessId()) + " / " + std::to_string(environment->ThreadId())};
    return NoteBehind(oldNote, now, additionalNote);
}

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

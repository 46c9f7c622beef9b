#include <limits>

#include "automation/runtime_error.h"
#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/job_helper.h"
#include "store/sql_text.h"
#include "store/table_names.h"

namespace kxjob {
namespace {

constexpr std::int32_t kBatchSize = 100;

}  // namespace

std::string JobHelper::CreateJobItem(std::string ConnectionString, DataStoreProvider Provider,
                                     std::string NameQualifier, std::string JobGUID,
                                     std::string IdentifierGUID, std::string Data, std::int32_t Sequence) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID},
                                {"IdentifierGUID", IdentifierGUID},
                                {"Data", Data},
                                {"Sequence", Sequence}};
    return InFrame("CreateJobItem", given, [&](Frame& frame) {
        UseConfigurationIfIncomplete(frame, ConnectionString, Provider, NameQualifier);
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        frame.CheckParameter(JobGUID, "JobGUID");
        std::string itemGuid = frame.NewGuid();

        SqlText sql;
        sql << "INSERT INTO " << tables.JobItem() << " (";
        sql << "jobitemguid, jobguid, identifier, sequence";
        sql << ") VALUES (";
        sql << frame.FormatValue(itemGuid) << ", ";
        sql << frame.FormatValue(JobGUID) << ", ";
        sql << frame.FormatValue(IdentifierGUID) << ", ";
        sql << Sequence << ")";
        frame.Execute(ConnectionString, Provider, sql);
        frame.WriteLongText(ConnectionString, Provider, NameQualifier, tables.Base("JobItem"), "jobitemguid",
                            itemGuid, "data", Data);
        return itemGuid;
    });
}

void JobHelper::CreateSimpleJobItems(std::string ConnectionString, DataStoreProvider Provider,
                                     std::string NameQualifier, std::string JobGUID, Value IdentifierGUIDs) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"Provider", Provider},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID},
                                {"IdentifierGUIDs", IdentifierGUIDs}};
    return InFrame("CreateSimpleJobItems", given, [&](Frame& frame) {
        // Unlike CreateJobItem, this one never takes its connection from the configuration.
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(NameQualifier, "NameQualifier");
        frame.CheckParameter(JobGUID, "JobGUID");
        const std::string wanted =
            "You should pass a one dimensional array of GUIDS to Job_83.JobHelper.CreateSimpleJobItems";
        if (!IdentifierGUIDs.IsArray()) frame.Raise(749, wanted);
        if (frame.DimensionCount(IdentifierGUIDs) > 1) frame.Raise(750, wanted);
        const Array& identifiers = frame.Use(IdentifierGUIDs).General();

        const std::shared_ptr<BatchSqlExecutor> executor = frame.NewBatchSqlExecutor();
        frame.UseObject(executor).Open(ConnectionString, Provider, kBatchSize);
        const std::int32_t first = frame.LowerBound(IdentifierGUIDs);
        const std::int32_t last = frame.UpperBound(IdentifierGUIDs);
        const std::int32_t count = frame.ElementCount(IdentifierGUIDs);
        frame.Trace(kProgress, "Adding " + std::to_string(count) + " Job Items in batches of upto " +
                                   std::to_string(kBatchSize));

        SqlText prefix;
        prefix << "INSERT INTO " << tables.JobItem() << " (";
        prefix << "jobguid, jobitemguid, identifier, sequence";  // the key stands second here: published
                                                                 // text
        prefix << ") VALUES (";
        prefix << frame.FormatValue(JobGUID) << ", ";

        std::int32_t sequence = 0;
        for (std::int64_t index = first; index <= last; ++index) {
            SqlText sql = prefix;
            sql << frame.FormatValue(frame.NewGuid()) << ", ";
            sql << frame.FormatValue(identifiers.At(static_cast<std::int32_t>(index))) << ", ";
            sql << sequence << ")";
            frame.UseObject(executor).Add(sql);
            if (sequence == std::numeric_limits<std::int32_t>::max()) {
                RaiseRuntimeError(error_number::kOverflow);
            }
            ++sequence;
        }
        frame.UseObject(executor).Flush();
    });
}

}  // namespace kxjob

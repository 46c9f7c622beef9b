#include "demo/demo_report.h"

#include <algorithm>

#include "kxjob/array.h"
#include "kxjob/job_helper.h"
#include "terminal/text_table.h"

namespace kxjob::command {
namespace {

constexpr std::int32_t kShownResults = 3;

/// Selected columns of a query result, in the order of the result's rows.
void PrintRows(std::ostream& out, const std::string& title, const std::vector<std::string>& header,
               const std::vector<std::int32_t>& columns, const Value& result) {
    TextTable table(header);
    for (std::int32_t row = 0; !result.IsEmpty() && row < result.Rows().Rows(); ++row) {
        std::vector<std::string> cells;
        cells.reserve(columns.size());
        for (const std::int32_t column : columns)
            cells.push_back(result.Rows().Cell(column, row).ToJoinedText());
        table.AddRow(std::move(cells));
    }
    table.Print(out, title);
}

void PrintStatistics(std::ostream& out, const Value& statistics) {
    struct Line {
        const char* name;
        StatisticsFields field;
    };
    TextTable table({"of the job", "value"});
    for (const Line& line :
         {Line{"job", sfJobGUID}, Line{"description", sfDescription}, Line{"type", sfJobType},
          Line{"state", sfJobState}, Line{"items", sfTotalItemCount}, Line{"succeeded", sfSucceededItemCount},
          Line{"failed", sfFailedItemCount}, Line{"started", sfStartDateTime},
          Line{"last item ended", sfLastCompletedDateTime},
          Line{"sum of squared increments", sfSumOfTimeIncrementsSquared}}) {
        table.AddRow({line.name, statistics.Rows().Cell(line.field, 0).ToJoinedText()});
    }
    table.Print(out, "Statistics");
}

/// A few finished items with what their component gave back, and every failed one with its note.
void PrintItems(std::ostream& out, JobHelper& helper, const StoreConnection& store,
                const std::string& jobGuid) {
    constexpr std::int32_t kItemGuid = 0;
    constexpr std::int32_t kState = 2;
    const Value items =
        helper.GetJobItems(store.connectionString, store.provider, store.nameQualifier, jobGuid);
    TextTable results({"file", "SHA-256"});
    std::string notes;
    std::int32_t shown = 0;
    for (std::int32_t row = 0; row < items.Rows().Rows(); ++row) {
        const std::string state = items.Rows().Cell(kState, row).ToJoinedText();
        const bool failed = state == "FAILED";
        if (!failed && shown >= kShownResults) continue;
        const Value item = helper.GetJobItem(store.connectionString, store.provider, store.nameQualifier,
                                             items.Rows().Cell(kItemGuid, row).ToText());
        const std::string file = item.Rows().Cell(jiifIdentifier, 0).ToJoinedText();
        std::string note = item.Rows().Cell(jiifFaliureNote, 0).ToJoinedText();
        if (failed) {
            std::erase(note, '\r');
            notes += file + "\n" + note + "\n\n";
        } else {
            results.AddRow({file, note});
            ++shown;
        }
    }
    results.Print(out, "The first results");
    out << "Failure notes\n" << (notes.empty() ? "none\n\n" : notes);
}

}  // namespace

void PrintJobReport(std::ostream& out, const StoreConnection& store, const std::string& jobGuid) {
    JobHelper helper;
    PrintStatistics(out, helper.GetJobExecutionStatistics(store.connectionString, store.provider,
                                                          store.nameQualifier, jobGuid));
    PrintRows(out, "Items by state", {"state", "items"}, {0, 1},
              helper.JobItemsAtState(store.connectionString, store.nameQualifier, jobGuid));
    PrintRows(out, "Items by owner", {"machine", "state", "items"}, {0, 1, 2},
              helper.OwnersOfJobItemsAtState(store.connectionString, store.nameQualifier, jobGuid));
    PrintRows(out, "Tasks", {"task", "machine", "process", "thread", "state", "started", "ended"},
              {jtfDescription, jtfMachine, jtfProcessID, jtfThreadID, jtfJobTaskStateID, jtfStartDateTime,
               jtfEndDateTime},
              helper.GetJobTasks(store.connectionString, store.provider, store.nameQualifier, jobGuid));
    PrintItems(out, helper, store, jobGuid);
}

}  // namespace kxjob::command

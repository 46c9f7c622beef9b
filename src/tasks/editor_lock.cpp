#include "frame/frame.h"
#include "kxjob/array.h"
#include "kxjob/job_helper.h"
#include "store/sql_text.h"
#include "store/table_names.h"

namespace kxjob {

std::string JobHelper::GetNewLockExcludingInterlopers(std::string ConnectionString, std::string NameQualifier,
                                                      std::string JobGUID, std::string JobTaskGUID,
                                                      std::string OldLockGUID, double NewLockDuration) {
    const ArgumentList given = {{"ConnectionString", ConnectionString},
                                {"NameQualifier", NameQualifier},
                                {"JobGUID", JobGUID},
                                {"JobTaskGUID", JobTaskGUID},
                                {"OldLockGUID", OldLockGUID},
                                {"NewLockDuration", NewLockDuration}};
    return InFrame("GetNewLockExcludingInterlopers", given, [&](Frame& frame) {
        const TableNames tables(frame, NameQualifier);
        frame.CheckParameter(JobGUID, "JobGUID");
        frame.CheckParameter(JobTaskGUID, "JobTaskGUID");
        frame.CheckParameter(OldLockGUID, "OldLockGUID");
        frame.CheckParameter(NameQualifier, "NameQualifier");
        std::string newLockGuid = frame.NewGuid();

        // One conditional statement decides between tasks that race; what it wrote is read
        // back, because engines differ in how they count changed rows.
        SqlText exchange;
        exchange << "UPDATE " << tables.job();
        exchange << " SET jobeditorlockguid = " << frame.FormatValue(newLockGuid);
        exchange << ", lockduration = " << NewLockDuration;
        exchange << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        exchange << " AND jobeditorlockguid = " << frame.FormatGuid(OldLockGUID);
        frame.Execute(ConnectionString, kDefaultProvider, exchange);

        SqlText reading;
        reading << "SELECT jobeditorlockguid FROM " << tables.job();
        reading << " WHERE jobguid = " << frame.FormatGuid(JobGUID);
        const Value rows = frame.Query(ConnectionString, kDefaultProvider, reading, true);
        if (rows.IsEmpty()) frame.Raise(745, "Job " + JobGUID + " has vanished");
        const std::string lockGuid = frame.Use(rows).Rows().Cell(0, 0).ToJoinedText();
        if (lockGuid != newLockGuid) {
            // No blank behind the first closing quote: published text.
            frame.Raise(746, "The lock GUID is '" + lockGuid + "'not the old value '" + OldLockGUID +
                                 "' or the attempted new value '" + newLockGuid +
                                 "' so the attempt to get a new lock has failed");
        }

        frame.Trace(kProgress, "Advising Job Task " + JobTaskGUID + " that it's lock " + OldLockGUID +
                                   " has been migrated to lock " + newLockGuid);
        frame.Use(*this).UpdateJobTaskLock(ConnectionString, NameQualifier, JobTaskGUID, newLockGuid);
        const std::string duration = frame.DurationText(NewLockDuration);
        frame.Trace(kProgress, "Lock " + OldLockGUID + " was migrated to lock " + newLockGuid +
                                   " with a duration of " + duration);
        return newLockGuid;
    });
}

}  // namespace kxjob

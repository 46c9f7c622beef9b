#pragma once

#include <cstdint>

namespace kxjob {

/// Columns of GetJobExecutionStatistics and GetJobExecutionStatisticsAllowMissing.
enum StatisticsFields : std::int32_t {
    sfJobGUID = 0,
    sfDescription = 1,
    sfJobType = 2,
    sfJobState = 3,
    sfNextItem = 4,
    sfTotalItemCount = 5,
    sfSucceededItemCount = 6,
    sfFailedItemCount = 7,
    sfStartDateTime = 8,
    sfLastCompletedDateTime = 9,
    sfSumOfTimeIncrementsSquared = 10,
    sfFailureNote = 11,
    sfAppStateGUID = 12,
};

/// Columns of GetJob.
enum JobInformationFields : std::int32_t {
    jifJobGUID = 0,
    jifDescription = 1,
    jifJobType = 2,
    jifParameters = 3,
    jifJobState = 4,
    jifNextItem = 5,
    jifTotalItemCount = 6,
    jifSucceededItemCount = 7,
    jifFailedItemCount = 8,
    jifStartDateTime = 9,
    jifLastCompletedDateTime = 10,
    jifSumOfTimeIncrementsSquared = 11,
    jifApplicationDefinitionGUID = 12,
    jifFailureNote = 13,
};

/// Columns of GetJobType.
enum JobTypeInformationFields : std::int32_t {
    jtifJobType = 0,
    jtifDescription = 1,
    jtifComponentInstantiationString = 2,
    jtifNotificationComponentInstantiationString = 3,
};

/// Columns of GetJobItem.
enum JobItemInformationFields : std::int32_t {
    jiifIdentifier = 0,
    jiifJobItemState = 1,
    jiifData = 2,
    jiifStartDate = 3,
    jiifEndDate = 4,
    jiifJobItemGUID = 5,
    jiifFaliureNote = 6,  // sic
};

/// Columns of GetJobTasks.
enum JobTaskFields : std::int32_t {
    jtfJobTaskGUID = 0,
    jtfDescription = 1,
    jtfJobGUID = 2,
    jtfMachine = 3,
    jtfProcessID = 4,
    jtfThreadID = 5,
    jtfLastJobItem = 6,
    jtfCommand = 7,
    jtfUser = 8,
    jtfJobTaskStateID = 9,
    jtfStartDateTime = 10,
    jtfEndDateTime = 11,
    jtfLockGUID = 12,
};

/// Useful indexers into returned data.
struct Enums {
    using StatisticsFields = kxjob::StatisticsFields;
    using JobInformationFields = kxjob::JobInformationFields;
    using JobTypeInformationFields = kxjob::JobTypeInformationFields;
    using JobItemInformationFields = kxjob::JobItemInformationFields;
    using JobTaskFields = kxjob::JobTaskFields;
};

}  // namespace kxjob

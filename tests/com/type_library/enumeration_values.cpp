// The numbers that automation clients see are those of the native library, name by name: compiling this is
// the test.
#include <windows.h>

#include "kxJob.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/enums.h"

namespace {

template <auto Published, auto Native>
constexpr bool kSame = static_cast<long>(Published) == static_cast<long>(Native);

static_assert(kSame<::sfJobGUID, kxjob::sfJobGUID>);
static_assert(kSame<::sfDescription, kxjob::sfDescription>);
static_assert(kSame<::sfJobType, kxjob::sfJobType>);
static_assert(kSame<::sfJobState, kxjob::sfJobState>);
static_assert(kSame<::sfNextItem, kxjob::sfNextItem>);
static_assert(kSame<::sfTotalItemCount, kxjob::sfTotalItemCount>);
static_assert(kSame<::sfSucceededItemCount, kxjob::sfSucceededItemCount>);
static_assert(kSame<::sfFailedItemCount, kxjob::sfFailedItemCount>);
static_assert(kSame<::sfStartDateTime, kxjob::sfStartDateTime>);
static_assert(kSame<::sfLastCompletedDateTime, kxjob::sfLastCompletedDateTime>);
static_assert(kSame<::sfSumOfTimeIncrementsSquared, kxjob::sfSumOfTimeIncrementsSquared>);
static_assert(kSame<::sfFailureNote, kxjob::sfFailureNote>);
static_assert(kSame<::sfAppStateGUID, kxjob::sfAppStateGUID>);

static_assert(kSame<::jifJobGUID, kxjob::jifJobGUID>);
static_assert(kSame<::jifDescription, kxjob::jifDescription>);
static_assert(kSame<::jifJobType, kxjob::jifJobType>);
static_assert(kSame<::jifParameters, kxjob::jifParameters>);
static_assert(kSame<::jifJobState, kxjob::jifJobState>);
static_assert(kSame<::jifNextItem, kxjob::jifNextItem>);
static_assert(kSame<::jifTotalItemCount, kxjob::jifTotalItemCount>);
static_assert(kSame<::jifSucceededItemCount, kxjob::jifSucceededItemCount>);
static_assert(kSame<::jifFailedItemCount, kxjob::jifFailedItemCount>);
static_assert(kSame<::jifStartDateTime, kxjob::jifStartDateTime>);
static_assert(kSame<::jifLastCompletedDateTime, kxjob::jifLastCompletedDateTime>);
static_assert(kSame<::jifSumOfTimeIncrementsSquared, kxjob::jifSumOfTimeIncrementsSquared>);
static_assert(kSame<::jifApplicationDefinitionGUID, kxjob::jifApplicationDefinitionGUID>);
static_assert(kSame<::jifFailureNote, kxjob::jifFailureNote>);

static_assert(kSame<::jtifJobType, kxjob::jtifJobType>);
static_assert(kSame<::jtifDescription, kxjob::jtifDescription>);
static_assert(kSame<::jtifComponentInstantiationString, kxjob::jtifComponentInstantiationString>);
static_assert(kSame<::jtifNotificationComponentInstantiationString,
                    kxjob::jtifNotificationComponentInstantiationString>);

static_assert(kSame<::jiifIdentifier, kxjob::jiifIdentifier>);
static_assert(kSame<::jiifJobItemState, kxjob::jiifJobItemState>);
static_assert(kSame<::jiifData, kxjob::jiifData>);
static_assert(kSame<::jiifStartDate, kxjob::jiifStartDate>);
static_assert(kSame<::jiifEndDate, kxjob::jiifEndDate>);
static_assert(kSame<::jiifJobItemGUID, kxjob::jiifJobItemGUID>);
static_assert(kSame<::jiifFaliureNote, kxjob::jiifFaliureNote>);  // sic

static_assert(kSame<::jtfJobTaskGUID, kxjob::jtfJobTaskGUID>);
static_assert(kSame<::jtfDescription, kxjob::jtfDescription>);
static_assert(kSame<::jtfJobGUID, kxjob::jtfJobGUID>);
static_assert(kSame<::jtfMachine, kxjob::jtfMachine>);
static_assert(kSame<::jtfProcessID, kxjob::jtfProcessID>);
static_assert(kSame<::jtfThreadID, kxjob::jtfThreadID>);
static_assert(kSame<::jtfLastJobItem, kxjob::jtfLastJobItem>);
static_assert(kSame<::jtfCommand, kxjob::jtfCommand>);
static_assert(kSame<::jtfUser, kxjob::jtfUser>);
static_assert(kSame<::jtfJobTaskStateID, kxjob::jtfJobTaskStateID>);
static_assert(kSame<::jtfStartDateTime, kxjob::jtfStartDateTime>);
static_assert(kSame<::jtfEndDateTime, kxjob::jtfEndDateTime>);
static_assert(kSame<::jtfLockGUID, kxjob::jtfLockGUID>);

static_assert(kSame<::dspOracle, kxjob::dspOracle>);
static_assert(kSame<::dspSqlServer, kxjob::dspSqlServer>);
static_assert(kSame<::dspPostgreSql, kxjob::dspPostgreSql>);
static_assert(kSame<::dspMariaDb, kxjob::dspMariaDb>);
static_assert(kSame<::dspSqlite, kxjob::dspSqlite>);

}  // namespace

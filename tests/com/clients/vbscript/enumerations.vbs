' The columns of returned rows. A script engine knows no enumerations of a type library: it repeats their numbers.

' StatisticsFields
Const sfJobGUID = 0
Const sfDescription = 1
Const sfJobType = 2
Const sfJobState = 3
Const sfNextItem = 4
Const sfTotalItemCount = 5
Const sfSucceededItemCount = 6
Const sfFailedItemCount = 7
Const sfStartDateTime = 8
Const sfLastCompletedDateTime = 9
Const sfSumOfTimeIncrementsSquared = 10
Const sfFailureNote = 11
Const sfAppStateGUID = 12

' JobInformationFields
Const jifJobGUID = 0
Const jifDescription = 1
Const jifJobType = 2
Const jifParameters = 3
Const jifJobState = 4
Const jifNextItem = 5
Const jifTotalItemCount = 6
Const jifSucceededItemCount = 7
Const jifFailedItemCount = 8
Const jifStartDateTime = 9
Const jifLastCompletedDateTime = 10
Const jifSumOfTimeIncrementsSquared = 11
Const jifApplicationDefinitionGUID = 12
Const jifFailureNote = 13

' JobTypeInformationFields
Const jtifJobType = 0
Const jtifDescription = 1
Const jtifComponentInstantiationString = 2
Const jtifNotificationComponentInstantiationString = 3

' JobItemInformationFields
Const jiifIdentifier = 0
Const jiifJobItemState = 1
Const jiifData = 2
Const jiifStartDate = 3
Const jiifEndDate = 4
Const jiifJobItemGUID = 5
Const jiifFaliureNote = 6 ' sic

' JobTaskFields
Const jtfJobTaskGUID = 0
Const jtfDescription = 1
Const jtfJobGUID = 2
Const jtfMachine = 3
Const jtfProcessID = 4
Const jtfThreadID = 5
Const jtfLastJobItem = 6
Const jtfCommand = 7
Const jtfUser = 8
Const jtfJobTaskStateID = 9
Const jtfStartDateTime = 10
Const jtfEndDateTime = 11
Const jtfLockGUID = 12

' DataStoreProvider
Const dspOracle = 1
Const dspSqlServer = 2
Const dspPostgreSql = 3
Const dspMariaDb = 4
Const dspSqlite = 5

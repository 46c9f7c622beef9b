#include "com/handles/text.h"
#include "com/objects/job_helper_object.h"
#include "com/objects/results.h"

namespace kxjob {

STDMETHODIMP JobHelperObject::GetJob(BSTR ConnectionString, ::DataStoreProvider Provider, BSTR NameQualifier,
                                     BSTR JobGUID, BSTR JobTypeID, BSTR JobStateID,
                                     BSTR* ApplicationStateGUID, VARIANT* result) {
    return Answer(Iid(), result, [&] {
        const std::string applicationState =
            ApplicationStateGUID == nullptr ? std::string() : TextOf(*ApplicationStateGUID);
        return helper_.GetJob(TextOf(ConnectionString), Provider, TextOf(NameQualifier), TextOf(JobGUID),
                              TextOf(JobTypeID), TextOf(JobStateID), applicationState);
    });
}

STDMETHODIMP JobHelperObject::GetJobType(BSTR ConnectionString, ::DataStoreProvider Provider,
                                         BSTR NameQualifier, BSTR JobTypeID, VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetJobType(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                  TextOf(JobTypeID));
    });
}

STDMETHODIMP JobHelperObject::GetJobParameters(BSTR ConnectionString, ::DataStoreProvider Provider,
                                               BSTR NameQualifier, BSTR JobGUID, BSTR* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetJobParameters(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                        TextOf(JobGUID));
    });
}

STDMETHODIMP JobHelperObject::GetJobItem(BSTR ConnectionString, ::DataStoreProvider Provider,
                                         BSTR NameQualifier, BSTR JobItemGUID, VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetJobItem(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                  TextOf(JobItemGUID));
    });
}

STDMETHODIMP JobHelperObject::GetJobItems(BSTR ConnectionString, ::DataStoreProvider Provider,
                                          BSTR NameQualifier, BSTR JobGUID, VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetJobItems(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                   TextOf(JobGUID));
    });
}

STDMETHODIMP JobHelperObject::GetJobTasks(BSTR ConnectionString, ::DataStoreProvider Provider,
                                          BSTR NameQualifier, BSTR JobGUID, VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetJobTasks(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                   TextOf(JobGUID));
    });
}

STDMETHODIMP JobHelperObject::GetJobExecutionStatistics(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                        BSTR NameQualifier, BSTR JobGUID, VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetJobExecutionStatistics(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                                 TextOf(JobGUID));
    });
}

STDMETHODIMP JobHelperObject::GetJobExecutionStatisticsAllowMissing(BSTR ConnectionString,
                                                                    ::DataStoreProvider Provider,
                                                                    BSTR NameQualifier, BSTR JobGUID,
                                                                    VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetJobExecutionStatisticsAllowMissing(TextOf(ConnectionString), Provider,
                                                             TextOf(NameQualifier), TextOf(JobGUID));
    });
}

STDMETHODIMP JobHelperObject::GetJobItemExecutionStatistics(BSTR ConnectionString,
                                                            ::DataStoreProvider Provider, BSTR NameQualifier,
                                                            BSTR JobGUID, LONG SequenceNumber,
                                                            VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetJobItemExecutionStatistics(TextOf(ConnectionString), Provider,
                                                     TextOf(NameQualifier), TextOf(JobGUID), SequenceNumber);
    });
}

STDMETHODIMP JobHelperObject::JobItemsAtState(BSTR ConnectionString, BSTR NameQualifier, BSTR JobGUID,
                                              BSTR StateId, VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.JobItemsAtState(TextOf(ConnectionString), TextOf(NameQualifier), TextOf(JobGUID),
                                       TextOf(StateId));
    });
}

STDMETHODIMP JobHelperObject::OwnersOfJobItemsAtState(BSTR ConnectionString, BSTR NameQualifier, BSTR JobGUID,
                                                      BSTR StateId, VARIANT* result) {
    return Answer(Iid(), result, [&] {
        return helper_.OwnersOfJobItemsAtState(TextOf(ConnectionString), TextOf(NameQualifier),
                                               TextOf(JobGUID), TextOf(StateId));
    });
}

}  // namespace kxjob

#include "com/handles/text.h"
#include "com/objects/job_helper_object.h"
#include "com/objects/text_by_reference.h"

namespace kxjob {

STDMETHODIMP JobHelperObject::UpdateJobStatus(BSTR ConnectionString, ::DataStoreProvider Provider,
                                              BSTR NameQualfier, BSTR JobGUID, BSTR JobStateID) {
    return AtBoundary(Iid(), [&] {
        helper_.UpdateJobStatus(TextOf(ConnectionString), Provider, TextOf(NameQualfier), TextOf(JobGUID),
                                TextOf(JobStateID));
    });
}

STDMETHODIMP JobHelperObject::UpdateJobItemStatus(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                  BSTR NameQualfier, BSTR JobItemGUID, BSTR JobItemStateID,
                                                  BSTR StartISODateTime, BSTR EndISODateTime,
                                                  BSTR JobTaskGUID) {
    return AtBoundary(Iid(), [&] {
        helper_.UpdateJobItemStatus(TextOf(ConnectionString), Provider, TextOf(NameQualfier),
                                    TextOf(JobItemGUID), TextOf(JobItemStateID), TextOf(StartISODateTime),
                                    TextOf(EndISODateTime), TextOf(JobTaskGUID));
    });
}

STDMETHODIMP JobHelperObject::AppendJobFailureNote(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                   BSTR NameQualfier, BSTR JobGUID, BSTR AdditionalNote) {
    return AtBoundary(Iid(), [&] {
        helper_.AppendJobFailureNote(TextOf(ConnectionString), Provider, TextOf(NameQualfier),
                                     TextOf(JobGUID), TextOf(AdditionalNote));
    });
}

STDMETHODIMP JobHelperObject::AppendJobItemFailureNote(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                       BSTR NameQualfier, BSTR JobItemGUID,
                                                       BSTR AdditionalNote) {
    return AtBoundary(Iid(), [&] {
        helper_.AppendJobItemFailureNote(TextOf(ConnectionString), Provider, TextOf(NameQualfier),
                                         TextOf(JobItemGUID), TextOf(AdditionalNote));
    });
}

STDMETHODIMP JobHelperObject::GetNextJob(BSTR ConnectionString, ::DataStoreProvider Provider,
                                         BSTR NameQualifier, BSTR* JobGUID, double* JobRank) {
    if (JobGUID == nullptr || JobRank == nullptr) return E_POINTER;
    return AtBoundary(Iid(), [&] {
        TextByReference jobGuid(JobGUID);
        helper_.GetNextJob(TextOf(ConnectionString), Provider, TextOf(NameQualifier), jobGuid.Text(),
                           *JobRank);
    });
}

}  // namespace kxjob

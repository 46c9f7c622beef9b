#include "com/handles/text.h"
#include "com/objects/job_helper_object.h"
#include "com/objects/results.h"
#include "com/values/value_of_variant.h"

namespace kxjob {

STDMETHODIMP JobHelperObject::CreateJob(BSTR ConnectionString, ::DataStoreProvider Provider,
                                        BSTR NameQualifier, BSTR GUID, BSTR JobTypeID, BSTR Description,
                                        BSTR ApplicationStateGUID, BSTR Parameters, LONG TotalItemCount) {
    return AtBoundary(Iid(), [&] {
        helper_.CreateJob(TextOf(ConnectionString), Provider, TextOf(NameQualifier), TextOf(GUID),
                          TextOf(JobTypeID), TextOf(Description), TextOf(ApplicationStateGUID),
                          TextOf(Parameters), TotalItemCount);
    });
}

STDMETHODIMP JobHelperObject::CreateJobItem(BSTR ConnectionString, ::DataStoreProvider Provider,
                                            BSTR NameQualifier, BSTR JobGUID, BSTR IdentifierGUID, BSTR Data,
                                            LONG Sequence, BSTR* result) {
    return Answer(Iid(), result, [&] {
        return helper_.CreateJobItem(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                     TextOf(JobGUID), TextOf(IdentifierGUID), TextOf(Data), Sequence);
    });
}

STDMETHODIMP JobHelperObject::CreateSimpleJobItems(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                   BSTR NameQualifier, BSTR JobGUID,
                                                   VARIANT IdentifierGUIDs) {
    return AtBoundary(Iid(), [&] {
        helper_.CreateSimpleJobItems(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                     TextOf(JobGUID), ValueOf(IdentifierGUIDs));
    });
}

STDMETHODIMP JobHelperObject::RemoveJobAndItems(BSTR ConnectionString, ::DataStoreProvider Provider,
                                                BSTR NameQualfier, BSTR JobGUID) {
    return AtBoundary(Iid(), [&] {
        helper_.RemoveJobAndItems(TextOf(ConnectionString), Provider, TextOf(NameQualfier), TextOf(JobGUID));
    });
}

STDMETHODIMP JobHelperObject::RemoveIrrelevantJobsInAllContainers(BSTR ConnectionString,
                                                                  ::DataStoreProvider Provider,
                                                                  BSTR NameQualifier) {
    return AtBoundary(Iid(), [&] {
        helper_.RemoveIrrelevantJobsInAllContainers(TextOf(ConnectionString), Provider,
                                                    TextOf(NameQualifier));
    });
}

STDMETHODIMP JobHelperObject::RemoveIrrelevantJobsInContainer(BSTR ConnectionString,
                                                              ::DataStoreProvider Provider,
                                                              BSTR NameQualifier, BSTR ProductionStateGUID,
                                                              BSTR DevelopmentStateGUID) {
    return AtBoundary(Iid(), [&] {
        helper_.RemoveIrrelevantJobsInContainer(TextOf(ConnectionString), Provider, TextOf(NameQualifier),
                                                TextOf(ProductionStateGUID), TextOf(DevelopmentStateGUID));
    });
}

}  // namespace kxjob

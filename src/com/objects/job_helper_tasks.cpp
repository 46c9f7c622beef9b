#include "com/handles/text.h"
#include "com/objects/job_helper_object.h"
#include "com/objects/results.h"
#include "com/values/value_of_variant.h"

namespace kxjob {

STDMETHODIMP JobHelperObject::RegisterJobTask(VARIANT ConnectionString, BSTR NameQualifier,
                                              VARIANT Description, BSTR JobGUID, VARIANT User,
                                              VARIANT MachineName, LONG PID, LONG ThreadID, BSTR* result) {
    return Answer(Iid(), result, [&] {
        return helper_.RegisterJobTask(ValueOf(ConnectionString), TextOf(NameQualifier), ValueOf(Description),
                                       TextOf(JobGUID), ValueOf(User), ValueOf(MachineName), PID, ThreadID);
    });
}

STDMETHODIMP JobHelperObject::UnRegisterJobTask(BSTR ConnectionString, BSTR NameQualifier, BSTR JobTaskGUID) {
    return AtBoundary(Iid(), [&] {
        helper_.UnRegisterJobTask(TextOf(ConnectionString), TextOf(NameQualifier), TextOf(JobTaskGUID));
    });
}

STDMETHODIMP JobHelperObject::UnRegisterJobTaskIndicatingStatus(BSTR ConnectionString, BSTR NameQualifier,
                                                                BSTR JobTaskGUID, VARIANT_BOOL Succeeded) {
    return AtBoundary(Iid(), [&] {
        helper_.UnRegisterJobTaskIndicatingStatus(TextOf(ConnectionString), TextOf(NameQualifier),
                                                  TextOf(JobTaskGUID), Succeeded != VARIANT_FALSE);
    });
}

STDMETHODIMP JobHelperObject::UpdateTaskRegistration(BSTR ConnectionString, BSTR NameQualifier,
                                                     BSTR JobTaskGUID, BSTR LastJobItem,
                                                     BSTR JobTaskStateID) {
    return AtBoundary(Iid(), [&] {
        helper_.UpdateTaskRegistration(TextOf(ConnectionString), TextOf(NameQualifier), TextOf(JobTaskGUID),
                                       TextOf(LastJobItem), TextOf(JobTaskStateID));
    });
}

STDMETHODIMP JobHelperObject::UpdateJobTaskLock(BSTR ConnectionString, BSTR NameQualifier, BSTR JobTaskGUID,
                                                BSTR LockGUID) {
    return AtBoundary(Iid(), [&] {
        helper_.UpdateJobTaskLock(TextOf(ConnectionString), TextOf(NameQualifier), TextOf(JobTaskGUID),
                                  TextOf(LockGUID));
    });
}

STDMETHODIMP JobHelperObject::UpdateTaskCommand(BSTR ConnectionString, BSTR NameQualifier, BSTR JobTaskGUID,
                                                BSTR Command) {
    return AtBoundary(Iid(), [&] {
        helper_.UpdateTaskCommand(TextOf(ConnectionString), TextOf(NameQualifier), TextOf(JobTaskGUID),
                                  TextOf(Command));
    });
}

STDMETHODIMP JobHelperObject::GetNewLockExcludingInterlopers(BSTR ConnectionString, BSTR NameQualifier,
                                                             BSTR JobGUID, BSTR JobTaskGUID, BSTR OldLockGUID,
                                                             double NewLockDuration, BSTR* result) {
    return Answer(Iid(), result, [&] {
        return helper_.GetNewLockExcludingInterlopers(TextOf(ConnectionString), TextOf(NameQualifier),
                                                      TextOf(JobGUID), TextOf(JobTaskGUID),
                                                      TextOf(OldLockGUID), NewLockDuration);
    });
}

}  // namespace kxjob

#include "com/handles/text.h"
#include "com/late/client_collection.h"
#include "com/objects/job_helper_object.h"
#include "com/objects/results.h"

namespace kxjob {

STDMETHODIMP JobHelperObject::Version(BSTR* result) {
    return Answer(Iid(), result, [&] { return helper_.Version(); });
}

STDMETHODIMP JobHelperObject::IsJobComplete(BSTR StateId, VARIANT_BOOL* result) {
    return Answer(Iid(), result, [&] { return helper_.IsJobComplete(TextOf(StateId)); });
}

STDMETHODIMP JobHelperObject::IsJobRunning(BSTR StateId, VARIANT_BOOL* result) {
    return Answer(Iid(), result, [&] { return helper_.IsJobRunning(TextOf(StateId)); });
}

STDMETHODIMP JobHelperObject::ParametersTagName(BSTR* result) {
    return Answer(Iid(), result, [&] { return helper_.ParametersTagName(); });
}

STDMETHODIMP JobHelperObject::ParameterTagName(BSTR* result) {
    return Answer(Iid(), result, [&] { return helper_.ParameterTagName(); });
}

STDMETHODIMP JobHelperObject::JobTableCreationScript(IDispatch** providerOptions,
                                                     ::DataStoreProvider Provider, BSTR NameQualifier,
                                                     BSTR* result) {
    if (providerOptions == nullptr) return E_POINTER;
    return Answer(Iid(), result, [&] {
        ClientCollection options(ComPointer<IDispatch>::Of(*providerOptions));
        return helper_.JobTableCreationScript(options, Provider, TextOf(NameQualifier));
    });
}

}  // namespace kxjob

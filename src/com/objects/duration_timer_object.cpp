#include "com/objects/duration_timer_object.h"

#include "com/objects/results.h"

namespace kxjob {

STDMETHODIMP DurationTimerObject::Start() {
    return AtBoundary(Iid(), [&] { timer_.Start(); });
}

STDMETHODIMP DurationTimerObject::get_Duration(double* result) {
    return Answer(Iid(), result, [&] { return timer_.Duration(); });
}

}  // namespace kxjob

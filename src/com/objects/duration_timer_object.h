#pragma once

#include <kxJob.h>

#include "com/objects/dual_object.h"
#include "kxjob/duration_timer.h"

namespace kxjob {

/// DurationTimer as automation clients see it. Its creation fails when the timer component cannot be made.
class DurationTimerObject final : public DualObject<_DurationTimer> {
public:
    using DualObject::DualObject;

    STDMETHODIMP Start() override;
    STDMETHODIMP get_Duration(double* result) override;

private:
    DurationTimer timer_;
};

}  // namespace kxjob

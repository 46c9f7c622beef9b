#include <array>

#include "com/objects/duration_timer_object.h"
#include "com/objects/enums_object.h"
#include "com/objects/job_helper_object.h"
#include "com/server/class_table.h"

namespace kxjob {
namespace {

template <typename Object>
IUnknown* Create(const ComClass& itself) {
    return static_cast<IDispatch*>(new Object(itself.clsid));
}

}  // namespace

std::span<const ComClass> ComClasses() {
    static const std::array kClasses = {
        ComClass{CLSID_JobHelper, "Job_83.JobHelper", "Functions to work with Jobs, Job Tasks and Job Items",
                 Create<JobHelperObject>},
        ComClass{CLSID_DurationTimer, "Job_83.DurationTimer", "A stopwatch that runs from its creation on",
                 Create<DurationTimerObject>},
        ComClass{CLSID_Enums, "Job_83.Enums", "Useful indexers into returned data", Create<EnumsObject>},
    };
    return kClasses;
}

const TypeLibraryIdentity* OwnTypeLibrary() {
    static const TypeLibraryIdentity kLibrary{LIBID_kxJob, 83, 0};
    return &kLibrary;
}

}  // namespace kxjob

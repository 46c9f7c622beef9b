#include "frame/frame.h"
#include "kxjob/job_helper.h"

namespace kxjob {

std::string JobHelper::Version() {
    return InFrame("Version", {}, [](Frame& frame) { return frame.VersionOfApplication(); });
}

std::string JobHelper::ParametersTagName() {
    return InFrame("ParametersTagName", {}, [](Frame& /*frame*/) { return std::string("parameters"); });
}

std::string JobHelper::ParameterTagName() {
    return InFrame("ParameterTagName", {}, [](Frame& /*frame*/) { return std::string("parameter"); });
}

}  // namespace kxjob

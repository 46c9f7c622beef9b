#include "collaborators/this_thread.h"
#include "kxjob/component_registry.h"

namespace kxjob {

ComponentRef CreateComponent(const std::string& progId) {
    return ThisThread().Objects().CreateObject(progId);
}

}  // namespace kxjob

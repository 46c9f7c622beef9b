#include "defaults/components/library_component.h"

#include <dlfcn.h>

#include "automation/runtime_error.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

using CreateFunction = Component* (*)(const char*);

[[noreturn]] void RaiseLoaderError(const std::string& progId) {
    const char* reason = dlerror();
    RaiseRuntimeError(error_number::kClassNotRegistered,
                      progId + ": " + (reason == nullptr ? "its library cannot be used" : reason));
}

}  // namespace

ComponentRef CreateFromLibrary(const std::string& progId, const std::string& path) {
    // Never closed: the objects' code must stay for as long as anybody may hold one.
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) RaiseLoaderError(progId);
    void* symbol = dlsym(library, "kxjob_create_component");
    if (symbol == nullptr) RaiseLoaderError(progId);
    const auto create = reinterpret_cast<CreateFunction>(symbol);
    return ComponentRef(create(progId.c_str()));
}

}  // namespace kxjob

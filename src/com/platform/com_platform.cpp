#include "com/platform/com_platform.h"

#include <ole2.h>
#include <windows.h>

#include <utility>

#include "automation/runtime_error.h"
#include "com/errors/error_info.h"
#include "com/handles/com_pointer.h"
#include "com/handles/text.h"
#include "com/late/late_component.h"
#include "kxjob/automation_error.h"

namespace kxjob {
namespace {

/// The class's own error if it raised one; else the system's words, naming the class.
void RequireCreated(HRESULT status, const std::string& progId) {
    if (SUCCEEDED(status)) return;
    if (status == error_number::kClassNotRegistered) RaiseRuntimeError(status, progId);
    const AutomationError error = ErrorOf(status);
    if (!error.Source().empty()) throw error;
    throw AutomationError(status, "Job_83", progId + ": " + error.Description());
}

}  // namespace

ComponentRef ComPlatform::CreateObject(const std::string& progId) {
    SetErrorInfo(0, nullptr);  // what is found there afterwards is about this creation
    CLSID clsid{};
    RequireCreated(CLSIDFromProgID(ToWide(progId).c_str(), &clsid), progId);
    ComPointer<IDispatch> object;
    RequireCreated(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.Receive()),
                   progId);
    return std::make_shared<LateComponent>(std::move(object), progId);
}

}  // namespace kxjob

#include "kxjob/call_journal.h"
#include "kxjob/component.h"

namespace kxjob {

std::optional<AutomationError> HeldError(const Value& value) {
    if (!value.IsObject()) return std::nullopt;
    try {
        const ComponentRef& object = value.Object();
        if (object->Name() != "Err") return std::nullopt;
        return AutomationError(object->Get("Number").ToInt32(), object->Get("Source").ToText(),
                               object->Get("Description").ToText());
    } catch (const AutomationError&) {
        return std::nullopt;  // no object, or one of another kind that happens to have this name
    }
}

}  // namespace kxjob

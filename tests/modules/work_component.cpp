#include <string>

#include "kxjob/automation_error.h"
#include "kxjob/component.h"
#include "kxjob/export.h"
#include "kxjob/value.h"

namespace {

/// Does nothing with an item, but raises for the data "fail", and gives back any other data as its note.
/// Raises when it is told that a job is finished.
class Worker : public kxjob::Component {
public:
    std::string Name() const override { return "Work_83.Worker"; }
    kxjob::Value Call(std::string_view method, std::span<const kxjob::Value> arguments) override {
        if (method == "JobFinished") {
            RequireArguments(method, arguments, 5);
            const std::string told = arguments[3].ToText() + " is " + arguments[4].ToText();
            throw kxjob::AutomationError(78, "Work_83.Worker", "told that " + told);
        }
        if (method != "RunJobItem") RaiseUnknownMember(method);
        RequireArguments(method, arguments, 7);
        const std::string data = arguments[6].ToText();
        if (data == "fail") throw kxjob::AutomationError(77, "Work_83.Worker", "as asked for");
        return data;
    }
};

}  // namespace

/// Knows "Work_83.Worker" and no other class.
extern "C" __attribute__((visibility("default"))) kxjob::Component* kxjob_create_component(
    const char* progId) {
    return std::string(progId) == "Work_83.Worker" ? new Worker() : nullptr;
}

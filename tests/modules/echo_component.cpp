#include <string>

#include "kxjob/automation_error.h"
#include "kxjob/component.h"
#include "kxjob/export.h"
#include "kxjob/value.h"

namespace {

class Echo : public kxjob::Component {
public:
    explicit Echo(std::string progId) : progId_(std::move(progId)) {}
    std::string Name() const override { return progId_; }
    kxjob::Value Call(std::string_view method, std::span<const kxjob::Value> arguments) override {
        if (method == "Fail") throw kxjob::AutomationError(77, "Echo", "as asked for");
        if (method != "Echo") return Component::Call(method, arguments);
        return arguments[0];
    }

private:
    std::string progId_;
};

}  // namespace

/// Knows "Echo_83.Echo" and no other class.
extern "C" __attribute__((visibility("default"))) kxjob::Component* kxjob_create_component(
    const char* progId) {
    const std::string name(progId);
    return name == "Echo_83.Echo" ? new Echo(name) : nullptr;
}

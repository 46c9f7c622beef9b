#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "journal/recorded.h"
#include "kxjob/component.h"

namespace kxjob {

/// A component that the library has created, shown by the name under which it asked for it.
class RecordedComponent : public Recorded<Component> {
public:
    RecordedComponent(std::shared_ptr<Recorder> recorder, ComponentRef inner, std::string shownName);

    std::string Name() const override { return shownName_; }
    Value Get(std::string_view property) override;
    void Let(std::string_view property, const Value& value) override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;

private:
    std::string shownName_;
};

}  // namespace kxjob

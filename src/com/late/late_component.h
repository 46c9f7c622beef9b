#pragma once

#include <ole2.h>
#include <windows.h>

#include <span>
#include <string>
#include <string_view>

#include "com/handles/com_pointer.h"
#include "kxjob/component.h"
#include "kxjob/value.h"

namespace kxjob {

/// A COM object whose members the library reaches by name. Errors that it raises keep number, source and
/// description.
class LateComponent : public Component {
public:
    LateComponent(ComPointer<IDispatch> object, std::string name);

    std::string Name() const override { return name_; }
    Value Get(std::string_view property) override;
    void Let(std::string_view property, const Value& value) override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;

    const ComPointer<IDispatch>& Object() const { return object_; }

private:
    DISPID IdOf(std::string_view member);

    ComPointer<IDispatch> object_;
    std::string name_;
};

/// The library's face of a client's object; no object for none.
ComponentRef ComponentOf(ComPointer<IDispatch> object);

/// COM's face of a component: its own object if it is one, else an adapter. Null for no component.
ComPointer<IDispatch> DispatchOf(const ComponentRef& component);

}  // namespace kxjob

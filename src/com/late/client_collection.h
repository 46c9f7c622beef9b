#pragma once

#include <span>
#include <string_view>

#include "com/late/late_component.h"
#include "kxjob/collection.h"

namespace kxjob {

/// A client's collection, handed on as it is: its late-bound members are the client's own. Seen as a
/// Collection of the library it is empty, for automation collections do not tell their keys.
class ClientCollection : public Collection {
public:
    /// `object` may be none.
    explicit ClientCollection(ComPointer<IDispatch> object) : object_(ComponentOf(std::move(object))) {}

    Value Get(std::string_view property) override {
        return object_ == nullptr ? Collection::Get(property) : object_->Get(property);
    }
    Value Call(std::string_view method, std::span<const Value> arguments) override {
        return object_ == nullptr ? Collection::Call(method, arguments) : object_->Call(method, arguments);
    }

private:
    ComponentRef object_;
};

}  // namespace kxjob

#include "collaborators/argument.h"

#include <utility>

#include "kxjob/collection.h"

namespace kxjob {
namespace {

/// Stands in a Value for an object that is only shown.
class ShownObject : public Component {
public:
    explicit ShownObject(std::string name) : name_(std::move(name)) {}
    std::string Name() const override { return name_; }

private:
    std::string name_;
};

Value Shown(const char* name) {
    return ComponentRef(std::make_shared<ShownObject>(name));
}

}  // namespace

bool Argument::IsByReference() const {
    return direction_ == Direction::InOut;
}

Value AsValue(const std::string& text) {
    return text;
}
Value AsValue(const Value& value) {
    return value;
}
Value AsValue(std::int32_t number) {
    return number;
}
Value AsValue(double number) {
    return number;
}
Value AsValue(bool boolean) {
    return boolean;
}
Value AsValue(const Collection& collection) {
    return Shown(collection.Name().c_str());
}

Value AsValue(const std::shared_ptr<Collection>& collection) {
    return collection == nullptr ? Value() : AsValue(*collection);
}

Value AsValue(const std::shared_ptr<ConnectionSettings>& settings) {
    return settings == nullptr ? Value() : Shown("ConnectionSettings");
}

Value AsValue(const std::shared_ptr<KeyedCollection>& map) {
    return map == nullptr ? Value() : Shown("KeyedCollection");
}

}  // namespace kxjob

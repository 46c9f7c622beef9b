#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>

#include "kxjob/value.h"

namespace kxjob {

class Collection;
class ConnectionSettings;
class KeyedCollection;

/// How the variables and results of methods look as a Value; objects that have no automation face are shown
/// by name.
Value AsValue(const std::string& text);
Value AsValue(const Value& value);
Value AsValue(std::int32_t number);
Value AsValue(double number);
Value AsValue(bool boolean);
Value AsValue(const Collection& collection);
Value AsValue(const std::shared_ptr<Collection>& collection);
Value AsValue(const std::shared_ptr<ConnectionSettings>& settings);
Value AsValue(const std::shared_ptr<KeyedCollection>& map);

/// One argument of a running method: its published name and the variable that holds it. Costs nothing until
/// read.
class Argument {
public:
    enum class Direction { In, InOut };

    template <typename T>
    Argument(const char* name, const T& variable, Direction direction = Direction::In)
        : name_(name),
          variable_(&variable),
          read_([](const void* v) { return AsValue(*static_cast<const T*>(v)); }),
          direction_(direction) {}

    const char* Name() const { return name_; }
    bool IsByReference() const;
    /// What the variable holds now.
    Value Read() const { return read_(variable_); }

private:
    const char* name_;
    const void* variable_;
    Value (*read_)(const void*);
    Direction direction_;
};

/// An argument that the caller sees changed.
template <typename T>
Argument ByReference(const char* name, const T& variable) {
    return {name, variable, Argument::Direction::InOut};
}

/// The arguments of a method, as it declares them and as they are looked at.
using ArgumentList = std::initializer_list<Argument>;
using Arguments = std::span<const Argument>;

}  // namespace kxjob

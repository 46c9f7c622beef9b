#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "kxjob/export.h"

namespace kxjob {

class Value;

/// A late-bound object: its members are reached by name, with `Value` arguments.
/// An implementation overrides what it has; the rest raises "unknown member" (0x80020003).
class KXJOB_EXPORT Component {
public:
    virtual ~Component();

    /// The ProgID or class name by which the object is shown in journals and errors.
    virtual std::string Name() const = 0;
    /// Reads a property.
    virtual Value Get(std::string_view property);
    /// Sets a property.
    virtual void Let(std::string_view property, const Value& value);
    /// Calls a method; one without result gives Empty.
    virtual Value Call(std::string_view method, std::span<const Value> arguments);
    /// The members that the object answers to, for callers to whom letter case does not count; none, the
    /// default, when it cannot tell.
    virtual std::span<const std::string_view> MemberNames() const { return {}; }

protected:
    Component() = default;
    Component(const Component&) = default;
    Component& operator=(const Component&) = default;

    /// Raises 0x80020003 for a member that this object does not have.
    [[noreturn]] void RaiseUnknownMember(std::string_view member) const;
    /// Raises 0x8002000E unless `arguments` holds exactly `count` values.
    void RequireArguments(std::string_view method, std::span<const Value> arguments, std::size_t count) const;
};

using ComponentRef = std::shared_ptr<Component>;

}  // namespace kxjob

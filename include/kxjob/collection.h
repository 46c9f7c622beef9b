#pragma once

#include <cstddef>
#include <list>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "kxjob/component.h"
#include "kxjob/export.h"
#include "kxjob/value.h"

namespace kxjob {

/// The standard collection: ordered, counted from 1, items optionally under a text key. Keys are compared
/// without regard to the case of ASCII letters. Access by key takes constant time, access by index linear
/// time.
class KXJOB_EXPORT Collection : public Component {
public:
    struct Entry {
        Value item;
        std::string foldedKey;  // empty: no key
    };
    using const_iterator = std::list<Entry>::const_iterator;

    std::size_t Count() const { return entries_.size(); }
    /// Adds at the end; an empty `key` means none. Raises 0x800A01C9 when the key is there already.
    void Add(Value item, std::string_view key = {});
    /// Raises 0x800A0009 when `index` is not within 1 to `Count()`.
    const Value& Item(std::size_t index) const;
    /// Raises 0x800A0005 when no item has this key.
    const Value& Item(std::string_view key) const;
    bool Exists(std::string_view key) const;
    /// Raises 0x800A0005 when no item has this key.
    void Remove(std::string_view key);

    /// In the order of adding.
    const_iterator begin() const { return entries_.begin(); }
    const_iterator end() const { return entries_.end(); }

    /// "Collection".
    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    /// The late-bound face: property Count; methods Add (item, key), Item (index or key), Remove (key).
    Value Get(std::string_view property) override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;

private:
    std::list<Entry>::iterator Find(std::string_view key) const;

    std::list<Entry> entries_;
    std::unordered_map<std::string, std::list<Entry>::iterator> byKey_;
};

}  // namespace kxjob

#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "defaults/store/session_cache.h"
#include "defaults/text/standard_input_guard.h"
#include "kxjob/component.h"

namespace kxjob {

/// `ContentBlobUpdate` (connection string, provider, qualifier, base table name, key column, key value,
/// column, text) replaces the text of a column in the row with that key. Raises 0x80040000 + 706 for a text
/// that no store can keep.
class ContentExec : public Component {
public:
    explicit ContentExec(std::shared_ptr<SessionCache> sessions);

    std::string Name() const override;
    std::span<const std::string_view> MemberNames() const override;
    Value Call(std::string_view method, std::span<const Value> arguments) override;

private:
    std::shared_ptr<SessionCache> sessions_;
    StandardInputGuard guard_;
};

}  // namespace kxjob

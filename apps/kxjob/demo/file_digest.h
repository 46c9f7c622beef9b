#pragma once

#include "kxjob/component.h"
#include "kxjob/value.h"

namespace kxjob::command {

/// The component that does the demo's items: RunJobItem gives the SHA-256 of the file that the identifier
/// names, as lower-case hex digits, and raises when the file cannot be read.
class FileDigest : public Component {
public:
    static constexpr const char* kProgId = "KxDemo_83.FileDigest";

    std::string Name() const override { return kProgId; }
    Value Call(std::string_view method, std::span<const Value> arguments) override;
};

}  // namespace kxjob::command

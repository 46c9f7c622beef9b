#pragma once

#include <string>

#include "collaborators/input_guard.h"

namespace kxjob {

/// Refuses `'`, `;`, `--`, `/*`, `*/` and control characters in any parameter. A name qualifier goes into
/// statements as it is, so that "NameQualifier" (also spelled "NameQualfier") accepts only a dotted name, the
/// last part of which may be unfinished or empty: parts of ASCII letters, digits, `_`, `$` and `#`, or quoted
/// by "...", [...] or backquotes. Raises 0x80040000 + 701.
class StandardInputGuard : public InputGuard {
public:
    void CheckParameter(const std::string& value, const std::string& parameterName) override;
};

}  // namespace kxjob

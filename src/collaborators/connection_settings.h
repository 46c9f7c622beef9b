#pragma once

#include <string>

#include "kxjob/value.h"

namespace kxjob {

/// The configuration document, read once and asked for the connection that callers leave out.
class ConnectionSettings {
public:
    virtual ~ConnectionSettings() = default;
    /// Takes in the document. Raises when it cannot be understood.
    virtual void LoadFromText(const std::string& text) = 0;
    /// Raises when the document names no connection.
    virtual std::string ADOConnectionString() = 0;
    /// A whole number, or a text that is one; Empty when the document names none.
    virtual Value Provider() = 0;
    /// Empty text when the document names none.
    virtual std::string NameSpaceQualifier() = 0;
};

}  // namespace kxjob

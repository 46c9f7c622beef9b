#pragma once

#include <span>
#include <string>

#include "kxjob/value.h"

namespace kxjob {

/// An open connection to one store. Each engine family implements it once. Statements run in autocommit,
/// exactly as handed over; failures are AutomationErrors 0x80040000 + 703 whose description starts with the
/// SQLSTATE in brackets.
class Session {
public:
    virtual ~Session() = default;

    virtual void Execute(const std::string& sql) = 0;
    /// Rows as (column, row) from 0; Empty when there is none.
    virtual Value Query(const std::string& sql) = 0;
    /// Binds `value`; `table` is the qualified name, `keyValue` plain text.
    virtual void WriteLongText(const std::string& table, const std::string& keyColumn,
                               const std::string& keyValue, const std::string& valueColumn,
                               const std::string& value) = 0;
    /// Runs the statements in order as one transaction. When one fails nothing of the batch stays, and the
    /// description names its place in the batch where that can be told.
    virtual void RunBatch(std::span<const std::string> statements) = 0;
    /// What the database system calls itself, and its version as it writes it.
    virtual std::string EngineName() = 0;
    virtual std::string EngineVersion() = 0;
    /// The SELECT of one cell, the time by the store's clock as ISO text in UTC; empty when none is known.
    virtual std::string NowQuery() const = 0;
    /// Whether an error has shown that the connection is of no more use.
    virtual bool IsLost() const = 0;
};

}  // namespace kxjob

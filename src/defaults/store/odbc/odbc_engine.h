#pragma once

#include <odbc_platform.h>

#include <cstdint>
#include <span>
#include <string_view>

#include "defaults/store/odbc/odbc_diagnostic.h"

namespace kxjob {

/// What an error of a driver means, where that is not what its state says. Empty texts and 0 fit any error.
struct ErrorRule {
    std::string_view state = {};
    std::int32_t native = 0;
    std::string_view messagePart = {};
    std::string_view meaning = {};  // the SQLSTATE to report; empty: the driver's own
    bool lost = false;              // the connection is of no more use
};

/// How a batch becomes one transaction.
struct BatchForm {
    bool transaction = true;  // it has to be put around the batch; else the exchange itself is one
    bool joined = false;      // all statements go in one exchange, with these texts around and between them
    bool rows = false;        // INSERTs of one row each become one of many rows, which does the same
    std::string_view before = {};
    std::string_view between = {};
    std::string_view after = {};
};

/// What is peculiar to one database system behind ODBC.
struct OdbcEngine {
    std::string_view dbmsName;  // what its drivers call it
    std::span<const std::string_view> setUp;
    BatchForm batch;
    SQLSMALLINT longText = kDriverLongText;  // the SQL type that a long text is bound as
    std::span<const ErrorRule> errors;
    std::string_view nowQuery = {};  // selects the time by the store's clock as ISO text in UTC
    bool prepares = false;           // statements that come again are prepared
};

/// The entry of the database system that a driver names; one without peculiarities when there is none.
const OdbcEngine& OdbcEngineNamed(std::string_view dbmsName);

struct ErrorMeaning {
    std::string_view state = {};
    bool lost;
};

/// What an error means on an engine: the first of its rules that fits counts. A state of class 08 always says
/// that the connection is lost.
ErrorMeaning MeaningOf(const Diagnostic& error, const OdbcEngine& engine);

}  // namespace kxjob

#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "statements/variant.h"

namespace kxjob::testing_support {

/// A statement that a method can issue.
struct CataloguedStatement {
    /// With placeholders, and as it was sent when it was first seen.
    std::string shape;
    std::string sent;
    /// When it is issued: any of these; empty: always.
    std::vector<std::string> conditions;
};

struct CataloguedMethod {
    std::string name;
    std::vector<CataloguedStatement> statements;
    /// The methods that it runs, in order.
    std::vector<std::string> runs;
};

struct CataloguedFamily {
    std::string title;
    std::vector<CataloguedMethod> methods;
};

/// What the running library sends.
struct Catalogue {
    std::vector<CataloguedFamily> families;
    /// Method and line of every call that may have sent something to the store.
    std::set<std::pair<std::string, std::int32_t>> storeCalls;
};

/// Calls every variant on a seeded SQLite store. Fails the test when one raises or does not, as it should.
Catalogue RecordCatalogue();

}  // namespace kxjob::testing_support

#pragma once

#include <set>
#include <string>

namespace kxjob::fuzz {

/// The tables that a qualifier names, made for as long as this lives; and beside them tables that a
/// misunderstood qualifier would reach.
class QualifiedTables {
public:
    explicit QualifiedTables(const std::string& qualifier);
    QualifiedTables(const QualifiedTables&) = delete;
    QualifiedTables& operator=(const QualifiedTables&) = delete;
    ~QualifiedTables();

    /// "database.table", in lower case. None for a name of so many parts as SQLite does not know.
    const std::set<std::string>& Named() const { return named_; }

private:
    std::set<std::string> named_;
    std::string attached_;
};

}  // namespace kxjob::fuzz

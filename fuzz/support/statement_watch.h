#pragma once

#include <sqlite3.h>

#include <set>
#include <string>
#include <vector>

namespace kxjob::fuzz {

/// The statements that a connection runs, and the tables that they reach, for as long as this lives.
class StatementWatch {
public:
    explicit StatementWatch(sqlite3* database);
    StatementWatch(const StatementWatch&) = delete;
    StatementWatch& operator=(const StatementWatch&) = delete;
    ~StatementWatch();

    const std::vector<std::string>& Statements() const { return statements_; }
    /// "database.table", in lower case.
    const std::set<std::string>& Tables() const { return tables_; }

private:
    static int OnStatement(unsigned kind, void* self, void* statement, void* text);
    static int OnAccess(void* self, int action, const char* first, const char* second, const char* database,
                        const char* trigger);

    sqlite3* database_;
    std::vector<std::string> statements_;
    std::set<std::string> tables_;
};

/// One instruction of the program that SQLite makes of a statement, without its text, and the text.
struct Instruction {
    std::string code;
    std::string text;
};

/// What SQLite makes of a statement; nothing when it is none, or more than one.
std::vector<Instruction> ShapeOf(sqlite3* database, const std::string& statement);

}  // namespace kxjob::fuzz

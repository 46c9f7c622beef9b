#include "support/statement_watch.h"

#include <memory>

#include "automation/letter_case.h"
#include "support/fuzz_input.h"

namespace kxjob::fuzz {
namespace {

std::string ColumnText(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    if (text == nullptr) return {};
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

}  // namespace

StatementWatch::StatementWatch(sqlite3* database) : database_(database) {
    sqlite3_trace_v2(database, SQLITE_TRACE_STMT, OnStatement, this);
    sqlite3_set_authorizer(database, OnAccess, this);
}

StatementWatch::~StatementWatch() {
    sqlite3_trace_v2(database_, 0, nullptr, nullptr);
    sqlite3_set_authorizer(database_, nullptr, nullptr);
}

int StatementWatch::OnStatement(unsigned /*kind*/, void* self, void* statement, void* /*text*/) {
    // As it would stand without bound values: a statement that is kept prepared has its literals bound.
    const std::unique_ptr<char, void (*)(void*)> text(
        sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement)), sqlite3_free);
    Require(text != nullptr, "a statement can be shown with its values");
    static_cast<StatementWatch*>(self)->statements_.emplace_back(text.get());
    return 0;
}

int StatementWatch::OnAccess(void* self, int action, const char* first, const char* /*second*/,
                             const char* database, const char* /*trigger*/) {
    const bool isOfTable = action == SQLITE_READ || action == SQLITE_INSERT || action == SQLITE_UPDATE ||
                           action == SQLITE_DELETE;
    if (isOfTable) {
        const std::string name = std::string(database == nullptr ? "" : database) + "." + first;
        static_cast<StatementWatch*>(self)->tables_.insert(FoldedCase(name));
    }
    return SQLITE_OK;
}

std::vector<Instruction> ShapeOf(sqlite3* database, const std::string& statement) {
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    const std::string sql = "EXPLAIN " + statement;
    const int result =
        sqlite3_prepare_v2(database, sql.c_str(), static_cast<int>(sql.size() + 1), &prepared, &rest);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(prepared, sqlite3_finalize);
    if (result != SQLITE_OK || *rest != '\0') return {};
    std::vector<Instruction> shape;
    while (sqlite3_step(prepared) == SQLITE_ROW) {  // addr, opcode, p1, p2, p3, p4, p5, comment
        Instruction instruction;
        instruction.code = ColumnText(prepared, 1);
        const bool isText = instruction.code == "String8";
        for (const int column : {2, 3, 4, 6}) instruction.code += " " + ColumnText(prepared, column);
        (isText ? instruction.text : instruction.code) += ColumnText(prepared, 5);
        shape.push_back(std::move(instruction));
    }
    return shape;
}

}  // namespace kxjob::fuzz

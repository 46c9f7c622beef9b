#include "recording/statement_tap.h"

#include <exception>
#include <map>
#include <regex>
#include <thread>

#include "kxjob/caller_texts.h"
#include "kxjob/data_store_provider.h"
#include "kxjob/store.h"

namespace kxjob::bench {
namespace {

std::string WithNewGuids(const std::string& text, std::map<std::string, std::string>& replaced) {
    static const std::regex guid(R"(\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\})");
    std::string result;
    auto rest = text.cbegin();
    for (std::sregex_iterator found(text.begin(), text.end(), guid), end; found != end; ++found) {
        const std::string old = found->str();
        result.append(rest, (*found)[0].first);
        rest = (*found)[0].second;
        if (!old.starts_with(kOwnGuid) && !replaced.contains(old)) replaced[old] = NewGuid();
        result += old.starts_with(kOwnGuid) ? old : replaced[old];
    }
    return result.append(rest, text.cend());
}

}  // namespace

std::vector<Statement>*& Recording() {
    thread_local std::vector<Statement>* recording = nullptr;
    return recording;
}

std::vector<Statement> StatementsOf(const std::string& connectionString, const std::function<void()>& call) {
    std::vector<Statement> statements;
    std::exception_ptr failed;
    const SqliteTap tap;
    std::thread([&] {
        try {
            Store(connectionString, dspSqlite, "").Query("SELECT 1");
            Recording() = &statements;
            call();
        } catch (...) {
            failed = std::current_exception();
        }
        Recording() = nullptr;
    }).join();
    if (failed) std::rethrow_exception(failed);
    return statements;
}

std::vector<Statement> WithNewGuids(const std::vector<Statement>& statements) {
    std::map<std::string, std::string> replaced;
    std::vector<Statement> result = statements;
    for (Statement& statement : result) {
        statement.sql = WithNewGuids(statement.sql, replaced);
        if (statement.boundText) statement.boundText = WithNewGuids(*statement.boundText, replaced);
    }
    return result;
}

}  // namespace kxjob::bench

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "kxjob/call_journal.h"

namespace kxjob::testing_support {

/// A statement as the store was given it, and the call that sent it.
struct SentStatement {
    std::string method;  // the running method of JobHelper; empty for a caller that is none
    std::int32_t line = 0;
    std::string sql;
};

/// Sees all that the calling thread's library does on SQLite stores, for as long as it lives: the events, and
/// every statement that reaches an engine, those of components too. Connections that are open before are not
/// seen. One at a time.
class StatementRecorder : public JournalSink {
public:
    StatementRecorder();
    StatementRecorder(const StatementRecorder&) = delete;
    StatementRecorder& operator=(const StatementRecorder&) = delete;
    ~StatementRecorder() override;

    void BeforeCall(const JournalEvent& call) override;
    void Write(const JournalEvent& event) override;

    /// Forgets what was seen.
    void Clear();
    const std::vector<SentStatement>& Statements() const { return statements_; }
    /// The methods that were entered, each behind the one that ran it; empty for the caller.
    const std::vector<std::pair<std::string, std::string>>& Entered() const { return entered_; }
    /// Method and line of every call of a collaborator that may send something to the store.
    const std::vector<std::pair<std::string, std::int32_t>>& StoreCalls() const { return storeCalls_; }

    /// For the engine's trace only.
    void Trace(const std::string& sql);

private:
    std::vector<SentStatement> statements_;
    std::vector<std::pair<std::string, std::string>> entered_;
    std::vector<std::pair<std::string, std::int32_t>> storeCalls_;
    std::vector<std::string> running_;
    bool isCalling_ = false;
    SentStatement call_;
};

}  // namespace kxjob::testing_support

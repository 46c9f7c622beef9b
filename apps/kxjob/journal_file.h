#pragma once

#include <fstream>
#include <string>

#include "kxjob/call_journal.h"

namespace kxjob::command {

/// Writes a call journal as JSON Lines, each event whole before the next thing happens.
class JournalFile : public JournalSink {
public:
    /// Starts the file anew. Raises UsageError when it cannot be written.
    explicit JournalFile(const std::string& path);

    void Write(const JournalEvent& event) override;
    /// Whether every event has reached the file.
    bool IsWhole() const { return file_.good(); }

private:
    std::ofstream file_;
};

}  // namespace kxjob::command

#include "kxjob/call_journal.h"

#include "collaborators/this_thread.h"
#include "journal/journaling_collaborators.h"

namespace kxjob {

JournalSink::~JournalSink() = default;

void JournalSink::BeforeCall(const JournalEvent& /*call*/) {}

CallJournal::CallJournal(JournalSink& sink) {
    InstallCollaborators(std::make_shared<JournalingCollaborators>(MakePlatformCollaborators(), sink));
}

CallJournal::~CallJournal() {
    InstallCollaborators(nullptr);
}

}  // namespace kxjob

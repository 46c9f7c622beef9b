#include <iostream>
#include <iterator>
#include <memory>

#include "command_groups.h"
#include "jobs/job_commands.h"
#include "kxjob/job_helper.h"
#include "records/item_record.h"
#include "records/job_record.h"
#include "store/store_options.h"
#include "usage_error.h"

namespace kxjob::command {
namespace {

struct NoteOptions {
    StoreOptions store;
    std::string subject;  // the GUID of a job, or of an item
    std::string text;
    bool isOnItem = false;
    bool json = false;
};

/// The note without the line break that ends a file.
std::string NoteText(const std::string& typed) {
    if (typed != "-") return typed;
    std::string text(std::istreambuf_iterator<char>(std::cin), {});
    if (text.ends_with('\n')) text.pop_back();
    return text;
}

void Note(const NoteOptions& options) {
    const StoreConnection connection = options.store.ResolveForJobs();
    const std::string text = NoteText(options.text);
    if (text.empty()) throw UsageError("A note needs a text.");
    JobHelper jobs;
    std::string guid;
    if (options.isOnItem) {
        guid = ReadItem(connection, options.subject).guid;
        jobs.AppendJobItemFailureNote(connection.connectionString, connection.provider,
                                      connection.nameQualifier, guid, text);
    } else {
        guid = ReadJob(connection, options.subject).guid;
        jobs.AppendJobFailureNote(connection.connectionString, connection.provider, connection.nameQualifier,
                                  guid, text);
    }
    const char* const subject = options.isOnItem ? "item" : "job";
    if (options.json) {
        std::cout << OneLine({{subject, guid}}) << '\n';
    } else {
        std::cout << "The note stands with " << subject << ' ' << guid << ".\n";
    }
}

}  // namespace

void AddNoteCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("note", "Add a note to a job or to an item");
    command->group(kJobs);
    const auto options = std::make_shared<NoteOptions>();
    command->add_option("JOB", options->subject, "The GUID of the job; with --item, of an item")
        ->type_name("")
        ->required();
    command->add_option("TEXT", options->text, "The note; - reads it from standard input")
        ->type_name("")
        ->required();
    command->add_flag("--item", options->isOnItem, "The note is on an item");
    command->add_flag("--json", options->json, "Print one JSON object");
    options->store.AddTo(*command);
    command->footer(
        "Examples:\n  kxjob note 6F9619FF-8B86-4D01-B42D-00CF4FC964FF 'stopped for the move'\n"
        "  dmesg | kxjob note --item 0F8FAD5B-D9CB-469F-A165-70867728950E -\n");
    command->callback([options] { Note(*options); });
}

}  // namespace kxjob::command

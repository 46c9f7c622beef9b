#include "manual/man_page.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <string_view>

#include "manual/command_tree.h"

namespace kxjob::command {
namespace {

constexpr std::string_view kEnd = R"(.SH EXIT STATUS
.TP
0
The operation is done.
.TP
1
It failed; standard error says why, in one sentence.
.TP
2
The command was called wrongly, and has done nothing.
.SH ENVIRONMENT
.TP
.B KXJOB_CONFIG
The configuration file to be used instead of those below.
.TP
.B NO_COLOR
When it is set and not empty, nothing is coloured.
.SH FILES
The first of these that is there is the configuration file:
.TP
.I ./kxjob.conf
.TQ
.I $XDG_CONFIG_HOME/kxjob/kxjob.conf
.TQ
.I /etc/kxjob.conf
Lines of key = value; ADOConnectionString, Provider and NameSpaceQualifier name the store.
)";

/// A text as roff takes it for itself: no character of it is a request.
std::string Plain(const std::string& text) {
    std::string plain;
    for (const char c : text) {
        const bool beginsLine = plain.empty() || plain.back() == '\n';
        if (beginsLine && (c == '.' || c == '\'')) plain += "\\&";
        if (c == '\\') {
            plain += "\\e";
        } else if (c == '-') {
            plain += "\\-";
        } else {
            plain += c;
        }
    }
    return plain;
}

std::string UpperCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

std::string SynopsisOf(const CLI::App& command, const std::string& path) {
    std::string synopsis = "\\fB" + Plain(path) + "\\fR";
    for (const CLI::Option* option : ShownOptions(command)) {
        if (!option->get_positional()) continue;
        const std::string name = Plain(NameOf(*option)) + (option->get_items_expected_max() > 1 ? "..." : "");
        synopsis +=
            option->get_required() ? fmt::format(" \\fI{}\\fR", name) : fmt::format(" [\\fI{}\\fR]", name);
    }
    if (!ShownCommands(command).empty()) synopsis += " \\fICOMMAND\\fR";
    return synopsis + " [\\fIOPTION\\fR]...";
}

void WriteOption(std::ostream& out, const CLI::Option& option) {
    out << ".TP\n\\fB" << Plain(NameOf(option)) << "\\fR";
    if (TakesValue(option) && !option.get_positional()) out << " \\fI" << Plain(KindOf(option)) << "\\fR";
    out << '\n' << Plain(option.get_description());
    if (!option.get_default_str().empty()) out << "; " << Plain(option.get_default_str()) << " by default";
    out << ".\n";
}

void WriteOptions(std::ostream& out, const CLI::App& command) {
    for (const CLI::Option* option : ShownOptions(command)) {
        if (option != command.get_help_ptr()) WriteOption(out, *option);
    }
}

/// A line for a line.
void WriteFooter(std::ostream& out, const CLI::App& command) {
    if (command.get_footer().empty()) return;
    out << ".PP\n.nf\n" << Plain(command.get_footer());
    if (!command.get_footer().ends_with('\n')) out << '\n';
    out << ".fi\n";
}

void WriteCommand(std::ostream& out, const CLI::App& command, const std::string& path) {
    const std::vector<const CLI::App*> parts = ShownCommands(command);
    if (parts.empty()) {
        out << ".SS " << SynopsisOf(command, path) << '\n' << Plain(command.get_description()) << ".\n";
        WriteOptions(out, command);
        WriteFooter(out, command);
    }
    for (const CLI::App* part : parts) WriteCommand(out, *part, path + " " + part->get_name());
}

}  // namespace

void WriteManPage(std::ostream& out, const CLI::App& app, const std::string& version) {
    const std::string& name = app.get_name();
    out << fmt::format(".TH \"{}\" 1 \"\" \"kxJob {}\" \"User Commands\"\n", UpperCase(name), version);
    out << ".SH NAME\n" << name << " \\- " << Plain(app.get_description()) << '\n';
    out << ".SH SYNOPSIS\n" << SynopsisOf(app, name) << '\n';
    out << ".SH DESCRIPTION\n"
           "Each command takes its store from the options \\-\\-connection, \\-\\-provider and "
           "\\-\\-qualifier, or\n"
           "from the configuration file, and \\-\\-help tells what it takes.\n";
    out << ".SH OPTIONS\n";
    WriteOptions(out, app);
    out << ".SH COMMANDS\n";
    for (const CLI::App* command : ShownCommands(app))
        WriteCommand(out, *command, name + " " + command->get_name());
    out << kEnd;
}

}  // namespace kxjob::command

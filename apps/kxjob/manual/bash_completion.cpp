#include "manual/bash_completion.h"

#include <fmt/format.h>

#include <string>
#include <vector>

#include "manual/command_tree.h"
#include "method_table.h"

namespace kxjob::command {
namespace {

/// What may stand behind the words of a command line.
struct Place {
    std::string path;                // the command with its sub-commands
    std::vector<std::string> words;  // what can be said next
};

/// What may stand behind an option.
struct ValuePlace {
    std::string path;  // the command, and the option
    bool isFile = false;
    std::vector<std::string> choices;  // none: nobody can tell
};

struct Places {
    std::vector<Place> commands;
    std::vector<ValuePlace> values;
};

void AddOptions(Places& places, Place& place, const CLI::App& command) {
    for (const CLI::Option* option : ShownOptions(command)) {
        const std::string name = NameOf(*option);
        const std::vector<std::string> choices = ChoicesOf(*option);
        if (option->get_positional()) {
            place.words.insert(place.words.end(), choices.begin(), choices.end());
            continue;
        }
        place.words.push_back(name);
        if (TakesValue(*option))
            places.values.push_back({place.path + " " + name, KindOf(*option) == "FILE", choices});
    }
}

void AddCommand(Places& places, const CLI::App& command, const std::string& path) {
    Place place{.path = path, .words = {}};
    for (const CLI::App* part : ShownCommands(command)) {
        place.words.push_back(part->get_name());
        AddCommand(places, *part, path + " " + part->get_name());
    }
    AddOptions(places, place, command);
    places.commands.push_back(std::move(place));
}

/// The parser leaves what stands behind `call` to the methods.
void AddMethods(Places& places, const std::string& path) {
    Place call{.path = path, .words = {}};
    for (const Method& method : Methods()) {
        Place place{.path = path + " " + method.name, .words = {"--explain"}};
        places.values.push_back({.path = place.path + " --explain", .isFile = true, .choices = {}});
        for (const MethodArgument& argument : method.arguments) {
            place.words.push_back("--" + argument.name);
            places.values.push_back(
                {.path = place.path + " --" + argument.name, .isFile = false, .choices = {}});
        }
        call.words.push_back(method.name);
        places.commands.push_back(std::move(place));
    }
    std::erase_if(places.commands, [&](const Place& place) { return place.path == path; });
    places.commands.push_back(std::move(call));
}

std::string Joined(const std::vector<std::string>& words) {
    std::string joined;
    for (const std::string& word : words) joined += (joined.empty() ? "" : " ") + word;
    return joined;
}

void WriteValues(std::ostream& out, const std::vector<ValuePlace>& values) {
    for (const ValuePlace& value : values) {
        if (value.isFile) {
            out << fmt::format("        '{}') _kxjob_offer -f \"$word\" ;;\n", value.path);
        } else if (!value.choices.empty()) {
            out << fmt::format("        '{}') _kxjob_offer -W '{}' \"$word\" ;;\n", value.path,
                               Joined(value.choices));
        } else {
            out << fmt::format("        '{}') ;;\n", value.path);
        }
    }
}

}  // namespace

void WriteBashCompletion(std::ostream& out, const CLI::App& app) {
    const std::string& name = app.get_name();
    Places places;
    AddCommand(places, app, name);
    AddMethods(places, name + " call");

    out << "# bash completion for " << name << "\n\n"
        << "# All but the last argument say what there is to compgen; the last one is what has been typed.\n"
           "_kxjob_offer() {\n"
           "    [[ $1 != -f ]] || compopt -o filenames 2>/dev/null\n"
           "    mapfile -t COMPREPLY < <(compgen \"${@:1:$#-1}\" -- \"${!#}\")\n"
           "}\n\n"
           "_kxjob() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} path="
        << name
        << " i\n"
           "    COMPREPLY=()\n"
           "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
           "        case \"$path ${COMP_WORDS[i]}\" in\n";
    for (const Place& place : places.commands) {
        if (place.path != name) out << "            '" << place.path << "') path='" << place.path << "' ;;\n";
    }
    out << "        esac\n"
           "    done\n"
           "    case \"$path ${COMP_WORDS[COMP_CWORD - 1]}\" in\n";
    WriteValues(out, places.values);
    out << "        *)\n"
           "            case \"$path\" in\n";
    for (const Place& place : places.commands)
        out << fmt::format("                '{}') _kxjob_offer -W '{}' \"$word\" ;;\n", place.path,
                           Joined(place.words));
    out << "            esac\n"
           "            ;;\n"
           "    esac\n"
           "}\n\n"
           "complete -F _kxjob "
        << name << '\n';
}

}  // namespace kxjob::command

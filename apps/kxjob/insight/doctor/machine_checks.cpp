#include "insight/doctor/machine_checks.h"

#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>

#include "kxjob/automation_error.h"
#include "kxjob/configuration_check.h"

namespace kxjob::command {
namespace {

std::string VariableOr(const char* name, const char* otherwise) {
    const char* const value = std::getenv(name);
    return value == nullptr || *value == '\0' ? otherwise : value;
}

/// Where the driver manager looks for its drivers.
std::filesystem::path DriversFile() {
    return std::filesystem::path(VariableOr("ODBCSYSINI", "/etc")) /
           VariableOr("ODBCINSTINI", "odbcinst.ini");
}

}  // namespace

bool CheckConfigurationFile(Findings& findings) {
    try {
        const ConfigurationCheck check = CheckConfiguration();
        if (check.file.empty()) {
            findings.push_back({finding::kNoConfiguration, "There is no configuration file."});
            return true;
        }
        findings.push_back(
            {finding::kConfigurationRead, fmt::format("The configuration is read from {}.", check.file)});
        for (const std::string& key : check.unknownKeys) {
            findings.push_back({finding::kUnknownKey,
                                fmt::format("The configuration's key {} is none that anybody reads.", key)});
        }
        return true;
    } catch (const AutomationError& error) {
        findings.push_back({finding::kConfigurationUnreadable, SentenceOf(error.Description())});
        return false;
    }
}

void CheckDriverThreads(Findings& findings) {
    static const std::regex kSection(R"(\s*\[([^\]]*)\].*)");
    static const std::regex kSerialised(R"(\s*Threading\s*=\s*3\s*)", std::regex::icase);
    const std::filesystem::path path = DriversFile();
    std::ifstream file(path);
    std::string section;
    for (std::string line; std::getline(file, line);) {
        std::smatch match;
        if (std::regex_match(line, match, kSection)) {
            section = match[1];
        } else if (std::regex_match(line, kSerialised)) {
            findings.push_back(
                {finding::kDriverSerialised,
                 fmt::format("Threading=3 in the section {} of {} makes the threads of a process wait for "
                             "one another: each statement runs alone.",
                             section, path.string())});
        }
    }
}

}  // namespace kxjob::command

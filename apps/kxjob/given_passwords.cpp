#include "given_passwords.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace kxjob::command {
namespace {

bool NamesPassword(std::string argument) {
    std::transform(argument.begin(), argument.end(), argument.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return argument.find("pwd") != std::string::npos || argument.find("password") != std::string::npos;
}

/// Every place where the text stands by itself.
void Blot(std::string& sentence, const std::string& text) {
    constexpr std::string_view kBlot = "***";
    if (text.empty()) return;
    const auto isEdge = [&](std::size_t at) { return at >= sentence.size() || sentence[at] == ' '; };
    for (std::size_t at = sentence.find(text); at != std::string::npos; at = sentence.find(text, at + 1)) {
        if ((at == 0 || isEdge(at - 1)) && isEdge(at + text.size())) sentence.replace(at, text.size(), kBlot);
    }
}

}  // namespace

std::string WithoutGivenPasswords(std::string sentence, const std::vector<std::string>& arguments) {
    bool isHidden = false;
    for (const std::string& argument : arguments) {
        isHidden = NamesPassword(argument) || (isHidden && !argument.starts_with('-'));
        if (!isHidden) continue;
        Blot(sentence, argument);
        if (argument.starts_with("--")) Blot(sentence, argument.substr(argument.find('=') + 1));
    }
    return sentence;
}

}  // namespace kxjob::command

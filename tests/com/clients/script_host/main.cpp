// Runs automation scripts that check something: `script_host LANGUAGE FILE... [-- ARGUMENT...]`.
// Exit status: 0 every check announced ran and passed, 1 a check or a script failed, 2 wrong usage.

#include <algorithm>
#include <exception>
#include <iostream>

#include "check_tally.h"
#include "com/support/apartment.h"
#include "host_object.h"
#include "script_engine.h"

namespace {

using kxjob::ComPointer;

int RunScripts(const std::wstring& language, const std::vector<std::wstring>& files,
               std::vector<std::wstring> arguments) {
    const kxjob::testing_support::Apartment apartment;
    kxjob::script_host::CheckTally tally;
    const auto host = kxjob::script_host::MakeHost(tally, std::move(arguments));
    kxjob::script_host::ScriptEngine engine(language, ComPointer<IDispatch>::From(host.Get()));
    for (const std::wstring& file : files) {
        if (!engine.Run(file)) return 1;
    }
    return tally.Passed() ? 0 : 1;
}

}  // namespace

int wmain(int count, wchar_t** texts) {
    const std::vector<std::wstring> words(texts + 1, texts + count);
    const auto separator = std::find(words.begin(), words.end(), L"--");
    if (separator - words.begin() < 2) {
        std::cerr << "usage: script_host vbscript|jscript FILE... [-- ARGUMENT...]\n";
        return 2;
    }
    try {
        const auto arguments = separator == words.end() ? separator : separator + 1;
        return RunScripts(words[0], {words.begin() + 1, separator}, {arguments, words.end()});
    } catch (const std::exception& error) {
        std::cerr << "script_host: " << error.what() << "\n";
        return 1;
    }
}

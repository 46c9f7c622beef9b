#include "host_object.h"

#include <iostream>
#include <stdexcept>

#include "com/handles/text.h"
#include "odbc_statement.h"
#include "text_file.h"
#include "value_text.h"

namespace kxjob::script_host {
namespace {

using Arguments = std::span<const Variant>;

std::string Text(const Variant& value) {
    if (value->vt != VT_BSTR) throw std::invalid_argument("a text is needed, not " + ValueText(*value));
    return TextOf(value->bstrVal);
}

int Number(const Variant& value) {
    if (value->vt == VT_I2) return value->iVal;
    if (value->vt == VT_I4) return value->lVal;
    throw std::invalid_argument("a whole number is needed, not " + ValueText(*value));
}

Variant TextVariant(Bstr text) {
    Variant value;
    value->vt = VT_BSTR;
    value->bstrVal = text.Release();
    return value;
}

Variant NumberVariant(int number) {
    Variant value;
    value->vt = VT_I4;
    value->lVal = number;
    return value;
}

std::vector<NamedFunction> Checks(CheckTally& tally) {
    return {
        {L"Expect", 1,
         [&tally](Arguments given) {
             tally.Expect(Number(given[0]));
             return Variant();
         }},
        {L"Check", 3,
         [&tally](Arguments given) {
             tally.Check(Text(given[0]), ValueText(*given[1]), ValueText(*given[2]));
             return Variant();
         }},
        {L"Fail", 1,
         [&tally](Arguments given) {
             tally.Fail(Text(given[0]));
             return Variant();
         }},
    };
}

std::vector<NamedFunction> Services(std::vector<std::wstring> arguments) {
    const int count = static_cast<int>(arguments.size());
    return {
        {L"Write", 1,
         [](Arguments given) {
             std::cout << (given[0]->vt == VT_BSTR ? Text(given[0]) : ValueText(*given[0])) << "\n";
             return Variant();
         }},
        {L"Text", 1, [](Arguments given) { return TextVariant(Bstr(ValueText(*given[0]))); }},
        {L"Argument", 1,
         [arguments = std::move(arguments)](Arguments given) {
             return TextVariant(Bstr(arguments.at(static_cast<std::size_t>(Number(given[0])))));
         }},
        {L"ArgumentCount", 0, [count](Arguments) { return NumberVariant(count); }},
        {L"ReadFile", 1,
         [](Arguments given) { return TextVariant(Bstr(ReadTextFile(ToWide(Text(given[0]))))); }},
        {L"DeleteFile", 1,
         [](Arguments given) {
             DeleteFileIfThere(ToWide(Text(given[0])));
             return Variant();
         }},
        {L"Execute", 2,
         [](Arguments given) { return RunStatement(ToWide(Text(given[0])), ToWide(Text(given[1]))); }},
    };
}

}  // namespace

ComPointer<NamedFunctions> MakeHost(CheckTally& tally, std::vector<std::wstring> arguments) {
    std::vector<NamedFunction> functions = Checks(tally);
    std::vector<NamedFunction> services = Services(std::move(arguments));
    std::move(services.begin(), services.end(), std::back_inserter(functions));
    return ComPointer<NamedFunctions>(new NamedFunctions(std::move(functions)));
}

}  // namespace kxjob::script_host

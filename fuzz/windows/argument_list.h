#pragma once

#include <ole2.h>
#include <windows.h>

#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/handles/com_pointer.h"

namespace kxjob::fuzz {

/// The arguments of a late-bound call, one from each text. Its first character says what it is, the rest is
/// its content:
///
///     t TEXT     a text                          e  Empty       z  Null        m  left out
///     n NUMBER   a whole number                  r NUMBER       a real one     b  True, with any content
///     u CODE     a type of any number, zero      y CODE         a null reference to it
///     v ARGUMENT a variable                      s TEXT         a variable that can hold texts only
///     x TYPE     a variable of one type, by a character of kTypes
///     a LOWER DIMENSIONS ARGUMENT|ARGUMENT…      an array       A              a variable with one
///     k LOWER DIMENSIONS TYPE…                   an array of one type          d  no object
///     o TEXT     an object that fails at each call when the text is empty, and answers with it else
///     = NAME ARGUMENT  named by its number, counted from '3'
///
/// Everything is alive during the call and freed afterwards; no pointer leads nowhere.
class ArgumentList {
public:
    explicit ArgumentList(std::span<const std::string> texts);
    ArgumentList(const ArgumentList&) = delete;
    ArgumentList& operator=(const ArgumentList&) = delete;
    /// Fails when somebody kept an object.
    ~ArgumentList();

    DISPPARAMS Parameters();
    /// Fails when a call changed what it was given by value, or kept an array locked.
    void RequireUntouched() const;

private:
    class Object;

    /// What a reference leads to.
    struct Cell {
        VARIANT variable{};
        BSTR text = nullptr;
        SAFEARRAY* array = nullptr;
        unsigned long long plain = 0;
    };

    VARIANT Argument(std::string_view text, int depth);
    SAFEARRAY* MakeArray(std::string_view text, int depth);
    Cell& NewCell() { return cells_.emplace_back(); }

    std::vector<VARIANT>
        arguments_;  // the last one first, as a call wants them; named ones before the others
    std::vector<VARIANT> before_;
    std::vector<std::string> texts_;  // of before_
    std::vector<DISPID> names_;
    std::deque<Cell> cells_;
    std::vector<ComPointer<Object>> objects_;
};

}  // namespace kxjob::fuzz

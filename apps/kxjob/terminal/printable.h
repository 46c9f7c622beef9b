#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kxjob::command {

/// How many columns a UTF-8 text takes, one a character.
std::size_t WidthOf(std::string_view text);

/// The text on one line, each control character a blank: what others wrote into a store must neither break a
/// table nor command the terminal.
std::string OnOneLine(std::string_view text);

/// The text with its line breaks, each line after `indent`; other control characters are blanks.
std::string Indented(std::string_view text, std::string_view indent);

}  // namespace kxjob::command

#pragma once

#include <cstddef>

namespace kxjob::command {

/// The columns and rows of the terminal at standard output; 80 and 24 when it does not tell.
struct WindowSize {
    std::size_t columns;
    std::size_t rows;
};
WindowSize SizeOfWindow();

}  // namespace kxjob::command

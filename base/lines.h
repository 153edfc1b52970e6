#pragma once

#include <iosfwd>
#include <string>

namespace kiva {

constexpr size_t longest_line = size_t{16} << 20;

/// The next line, without its end; false at the end of the input. Throws std::runtime_error with a
/// sentence where the line is longer than `longest_line` (that of an input without end, say), or
/// where the input cannot be read.
[[nodiscard]] bool next_line(std::istream& in, std::string& line);

}  // namespace kiva

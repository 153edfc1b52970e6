#pragma once

#include <ostream>

namespace kiva {

/// Writes the elements between "(" and ")", joined by ", ".
template <class Range>
void write_list(std::ostream& out, const Range& elements) {
  const char* separator = "";
  out << '(';
  for (const auto& element : elements) {
    out << separator << element;
    separator = ", ";
  }
  out << ')';
}

}  // namespace kiva

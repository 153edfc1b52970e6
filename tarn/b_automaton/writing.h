#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace kiva {

/// `before` + name + `after` of each, with `separator` between two.
template <class Names>
std::string joined(const Names& names, const std::string& separator, const std::string& before = "",
                   const std::string& after = "") {
  std::string text;
  bool first = true;
  for (const std::string& name : names) {
    if (!first) text += separator;
    text += before + name + after;
    first = false;
  }
  return text;
}

/// A line for each name.
template <class Names>
void put_lines(std::ostream& out, const Names& names, const std::string& before,
               const std::string& after) {
  for (const std::string& name : names) out << before << name << after << '\n';
}

/// What a document says of an initial value.
inline const char* initial_word(int value) {
  return value == 1 ? "true" : value == 0 ? "false" : "???";
}

}  // namespace kiva

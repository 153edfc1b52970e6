#pragma once

#include <string>
#include <unordered_map>

namespace kiva {

/// What is known of a signal of a module from its source.
struct SourceNote {
  std::string place;  ///< "stopwatch.zu:17 sustain d0", of plain characters
  std::string name;   ///< that tells what it is: "active_17"
};

/// Of a module whose texts are written.
struct SourceNotes {
  std::string made;                                ///< by what, and with which options
  std::string from;                                ///< what was read, and its hash
  std::unordered_map<std::string, SourceNote> of;  ///< by the name of a local

  /// Of the variable that bears this name in the module; null for none.
  const SourceNote* at(const std::string& variable) const;
};

/// A variable's name without what tells its rail: "_s_a" and "v_s_a" are "a".
std::string without_rail(const std::string& variable);

}  // namespace kiva

#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/aiger_text.h"

namespace kiva {

/// What is known of a signal of a module from its source.
struct SourceNote {
  std::string place;  ///< "stopwatch.zu:17 sustain d0", of plain characters
  std::string name;   ///< that tells what it is: "active_17"
};

/// What a document for people tells of a module besides.
struct DocumentNotes {
  struct Picture {
    std::string title;
    std::string tikz, svg;  ///< the same, for LaTeX and for HTML
  };
  struct Property {
    std::string word;  ///< "never"
    std::string text;
    std::string place;  ///< "stopwatch.zu:17"
  };
  std::vector<std::string> summary;                       ///< paragraphs
  std::unordered_map<std::string, std::string> meanings;  ///< by the name of a signal
  std::vector<Picture> pictures;
  std::vector<Property> properties;
};

/// Of a module whose texts are written.
struct SourceNotes {
  std::string made;                                ///< by what, and with which options
  std::string from;                                ///< what was read, and its hash
  std::unordered_map<std::string, SourceNote> of;  ///< by `key` of a local's name
  /// Makes of a module's circuit one of the same inputs and outputs that has the properties, too;
  /// empty where none are asked for.
  std::function<void(aig::Circuit& circuit)> with_properties = {};
  /// Called by documents alone, since pictures take time, with the names that registers have there,
  /// by `key`. Empty for nothing.
  using Names = std::unordered_map<std::string, std::string>;
  std::function<DocumentNotes(const Names&)> document = {};

  /// What is the same of a local and of the variables that it becomes.
  static std::string key(const std::string& name);
  /// Of the variable that bears this name in the module; null for none.
  const SourceNote* at(const std::string& variable) const;
};

/// A variable's name without what tells its rail: "_s_a" and "v_s_a" are "a".
std::string without_rail(const std::string& variable);

}  // namespace kiva

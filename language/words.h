#pragma once

#include <string_view>
#include <vector>

namespace kiva::language {

/// A word of the language as an editor shows it.
struct WordRow {
  std::string_view word;
  std::string_view meaning;  ///< a sentence or two
  std::string_view snippet;  ///< what completion writes, with places "$1"; "" for the word alone
};

/// Those that begin a statement first.
const std::vector<WordRow>& word_table();
/// Null for a word without a row.
const WordRow* find_word(std::string_view word);

}  // namespace kiva::language

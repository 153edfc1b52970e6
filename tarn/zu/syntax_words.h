#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiva {

/// What a person can write next, in words: the names of the grammar's symbols gathered into things
/// ("a statement", "a name") and spellings in quotes. Empty where there is too much to say.
std::string expectation(const std::vector<std::string>& symbols);
/// The spelling of a symbol in source text; "" for one that has none of its own.
std::string spelling(std::string_view symbol);
/// Of the symbols that are words, the one that a person may have meant; "" for none.
std::string word_meant(std::string_view word, const std::vector<std::string>& symbols);

}  // namespace kiva

#pragma once

#include <string_view>
#include <vector>

namespace kiva {

class Statement;

/// A statement of the language: what is not in its own file or in the grammar. Each row has its
/// section in docs/language.md, under its name, with examples that are tests.
struct StatementRow {
  struct Word {
    std::string_view text;
    int token;
  };
  const char* name;
  std::vector<Word> words;  ///< names that stand for tokens, each in the first row that needs it
  bool (*makes)(const Statement&);  ///< is it what the statement is read as?
};

/// In the order of the documentation.
const std::vector<StatementRow>& statement_table();

/// The token that the name stands for; `otherwise` for a name of the user's.
int statement_word(std::string_view name, int otherwise);

}  // namespace kiva

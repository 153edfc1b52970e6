// The statements of the language, a row each; what a statement is stands in its own files.

#include "tarn/zu/statement_table.h"

#include <unordered_map>

#include "parse_zu.hh"
#include "tarn/zu/statements/abort.h"
#include "tarn/zu/statements/automaton.h"
#include "tarn/zu/statements/emit.h"
#include "tarn/zu/statements/halt.h"
#include "tarn/zu/statements/loop.h"
#include "tarn/zu/statements/mealy.h"
#include "tarn/zu/statements/nothing.h"
#include "tarn/zu/statements/parallel.h"
#include "tarn/zu/statements/pause.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/run.h"
#include "tarn/zu/statements/sequence.h"
#include "tarn/zu/statements/sustain.h"
#include "tarn/zu/statements/wait.h"

namespace kiva {

namespace {

template <class T>
bool is(const Statement& statement) {
  return dynamic_cast<const T*>(&statement) != nullptr;
}

}  // namespace

const std::vector<StatementRow>& statement_table() {
  static const std::vector<StatementRow> table{
      {"nothing", {{"nothing", NOTHING}}, is<Nothing>},
      {"halt", {{"halt", HALT}}, is<Halt>},
      {"pause", {{"pause", PAUSE}}, is<Pause>},
      {"emit", {{"emit", EMIT}}, is<Emit>},
      {"noemit", {{"noemit", NOEMIT}}, is<NoEmit>},
      {"wait", {{"wait", WAIT}}, is<Wait>},
      {"sustain", {{"sustain", SUSTAIN}, {"until", UNTIL}}, is<SustainUntil>},
      {">>", {}, is<Sn>},
      {"||", {}, is<Pn>},
      {"present", {{"present", PRESENT}, {"else", ELSE}}, is<Present>},
      {"if", {{"if", IF}}, is<Present>},
      {"loop", {{"loop", LOOP}}, is<Loop>},
      {"repeat", {{"repeat", REPEAT}}, is<Sn>},
      {"weak abort", {{"weak", WEAK}, {"abort", ABORT}, {"when", WHEN}}, is<Abort>},
      {"strong abort", {{"strong", STRONG}}, is<StrongAbort>},
      {"run", {{"run", RUN}}, is<Run>},
      {"automaton", {{"automaton", AUTOMATON}}, is<Automaton>},
      {"Mealy Machine", {}, is<MealyMachine>},
  };
  return table;
}

int statement_word(std::string_view name, int otherwise) {
  static const auto words = [] {
    std::unordered_map<std::string_view, int> tokens;
    for (const StatementRow& row : statement_table())
      for (const StatementRow::Word& word : row.words) tokens.emplace(word.text, word.token);
    return tokens;
  }();
  const auto at = words.find(name);
  return at == words.end() ? otherwise : at->second;
}

}  // namespace kiva

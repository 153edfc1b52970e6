// What exceptions of the library say: to its own callers by class and words, to the users of
// programs by a sentence.

#include "tarn/model/sexception.h"

#include <array>
#include <string_view>

namespace kiva {

std::string LibraryException::text() const {
  std::string text = name();
  text += ':';
  if (!first_.empty()) text += ' ' + first_;
  if (!second_.empty()) text += ' ' + second_;
  return text;
}

std::string LibraryException::usual_sentence() const {
  struct Usual {
    std::string_view name;
    const char* before;
    const char* after;
  };
  static constexpr std::array<Usual, 6> usual{{
      {"ModuleUndefinedConstantException", "constant \"", "\" is not declared"},
      {"ModuleUnknownSignalException", "\"", "\" is not declared"},
      {"UndefinedTypeException", "type \"", "\" is not declared"},
      {"UndefinedMethodException", "method \"", "\" is not declared"},
      {"AlreadyDefinedException", "\"", "\" is declared twice"},
      {"HashTableAddException", "\"", "\" stands twice"},
  }};
  for (const Usual& row : usual)
    if (row.name == name()) return row.before + first_ + row.after;
  std::string text = first_;
  while (text.ends_with(' ') || text.ends_with(':')) text.pop_back();
  if (!second_.empty()) text += (text.empty() ? "" : ": ") + second_;
  return text.empty() ? "a fault without a reason" : text;
}

Diagnostic diagnostic_of(const LibraryException& exception) {
  Diagnostic fault = Diagnostic::of_told(exception.text(), Manner::untold);
  fault.name = exception.name();
  fault.where = place_of(exception.where());
  fault.sentence = exception.sentence();
  return fault;
}

}  // namespace kiva

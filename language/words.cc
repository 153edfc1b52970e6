#include "language/words.h"

namespace kiva::language {

const std::vector<WordRow>& word_table() {  // house: a row a word
  static const std::vector<WordRow> table{
      {"nothing", "Does nothing and ends at once.", ""},
      {"halt", "Does nothing and never ends.", ""},
      {"pause", "Ends in the instant after its start.", ""},
      {"emit", "Makes an output or local present in this instant, and ends at once.", "emit $1"},
      {"noemit", "Says that an output or local is absent in this instant, and ends at once.",
       "noemit $1"},
      {"wait",
       "Waits for a later instant in which its condition holds, and ends in that one; with a "
       "number, "
       "so many times over.",
       "wait $1"},
      {"sustain",
       "Emits a signal in each instant in which its condition does not hold, the first included; "
       "ends when it holds, perhaps at once.",
       "sustain $1 until $2"},
      {"present",
       "Takes the first branch if its condition holds in this instant, else the second, which may "
       "be left out.",
       "present $1 $2 else $3"},
      {"if", "Takes the first branch if the value is true, else the second, which may be left out.",
       "if $1 $2 else $3"},
      {"loop", "Its body again and again: it starts in the instant in which it ends. Never ends.",
       "loop { $1 }"},
      {"repeat", "Its body so many times, one after the other.", "repeat $1 { $2 }"},
      {"weak",
       "weak abort: its body until a later instant in which the condition holds, or until the body "
       "ends. The body still acts in that instant.",
       "weak abort { $1 } when $2"},
      {"strong",
       "strong abort: its body until a later instant in which the condition holds, or until the "
       "body "
       "ends. The body does nothing any more in that instant.",
       "strong abort { $1 } when $2"},
      {"run", "Does, in its place, what another module does, and ends when that ends.", "run $1"},
      {"abort", "Ends its body when a condition holds: weak, after it has acted; strong, before.",
       ""},
      {"until", "Ends the sustained emission when the condition holds.", ""},
      {"when", "The condition that ends the body of an abort, from the next instant on.", ""},
      {"else", "The branch that is taken where the condition does not hold.", ""},
      {"||", "All at the same time; ends when the last of them ends.", ""},
      {">>", "The one, then the other, in the instant in which the first ends.", ""},
      {"not", "Holds where its operand is anything but One.", ""},
      {"abs", "Holds where its operand is Zero; unknown where it is neither One nor Zero.", ""},
      {"and", "Holds where both operands hold.", ""},
      {"or", "Holds where one of the operands holds.", ""},
      {"TT", "Always holds.", ""},
      {"FF", "Never holds.", ""},
      {"automaton",
       "States and transitions, as the whole body of a module. It takes an initial transition when "
       "it "
       "starts; later, in each instant, the first one that is triggered.",
       "automaton\nstate: $1;\ntransition:\ninitial-> $1;"},
      {"Mealy Machine", "Equations that hold in each instant, over registers.",
       "Mealy Machine\nRegister: $1: 0: $2;\n$2 = $3;"},
      {"state:", "A state of the automaton, with what it runs and the signals that it shows.", ""},
      {"transition:", "The transitions of the automaton.", ""},
      {"initial->", "A transition that is taken when the automaton starts.", ""},
      {"->", "A strong transition: what the state runs is silent in that instant.", ""},
      {"strong->", "A strong transition: what the state runs is silent in that instant.", ""},
      {"weak->", "A weak transition: what the state runs still acts in that instant.", ""},
      {"normalterm->", "Taken when what the state runs has ended by itself.", ""},
      {"final", "A transition into the state ends the automaton.", ""},
      {"other", "Comes behind all transitions with a number.", ""},
      {"Register:", "Name, value at the start and signal of the next value of each register.", ""},
      {"Input:", "The signals that the module is given.", ""},
      {"Output:", "The signals that the module gives.", ""},
      {"Local:", "Signals between the parts of the module.", ""},
      {"Run:", "Where the modules are that this one runs.", ""},
      {"module", "A module: its interface, one statement, end.",
       "module $1:\nInput: $2;\nOutput: $3;\n\n$4\nend"},
  };
  return table;
}

const WordRow* find_word(std::string_view word) {
  if (word == "&") word = "and";
  if (word == "|") word = "or";
  if (word == "~") word = "not";
  for (const WordRow& row : word_table())
    if (row.word == word) return &row;
  return nullptr;
}

}  // namespace kiva::language

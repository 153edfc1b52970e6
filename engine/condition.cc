// A condition is a diagram over atoms: a signal's presence, a comparison of the instant's number, a
// value that is awaited. The text's own scanner takes the atoms out and puts a made name in their
// place; what is left is plain expression text, and means there what it means everywhere.

#include "engine/condition.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "base/text_stream.h"
#include "bdd/bddpp.h"
#include "bdd/expression_parser.h"

namespace kiva {

namespace {

struct Atom {
  enum Kind { presence, value, instant } kind;
  SignalPlace place{};
  std::string text;  ///< awaited value, or the comparison's operator
  long number = 0;
};

bool compares(long left, const std::string& op, long right) {
  if (op == "<") return left < right;
  if (op == "<=") return left <= right;
  if (op == ">") return left > right;
  if (op == ">=") return left >= right;
  return (left == right) == (op != "!=");
}

bool is_letter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || (c & 0x80) != 0;
}

/// Takes the atoms out of a text.
class AtomScanner {
 public:
  AtomScanner(const std::string& text, const SignalNames& names) : text_(text), names_(names) {}

  void run() {
    while (at_ < text_.size()) {
      const size_t begin = at_;
      while (at_ < text_.size() && is_letter(text_[at_])) ++at_;
      if (at_ == begin) {
        copy(begin, ++at_);
        continue;
      }
      const std::string word = text_.substr(begin, at_ - begin);
      if (std::isdigit(static_cast<unsigned char>(word[0])) != 0 || is_operator(word)) {
        copy(begin, at_);
      } else {
        atom(word, begin);
      }
    }
  }

  std::vector<Atom> atoms;
  std::string plain;          ///< the text with a name in the place of each atom
  std::vector<size_t> place;  ///< of each character of `plain`, in the text

 private:
  static bool is_operator(const std::string& word) {
    static constexpr std::array words{"and", "AND", "or",  "OR",   "not",
                                      "NOT", "xor", "XOR", "xnor", "XNOR"};
    return std::find(words.begin(), words.end(), word) != words.end();
  }

  void copy(size_t begin, size_t end) {
    for (size_t i = begin; i < end; ++i) put(text_[i], i);
  }
  void put(char c, size_t from) {
    plain += c;
    place.push_back(from);
  }

  void atom(const std::string& word, size_t begin) {
    Atom atom{Atom::presence, {}, "", 0};
    const bool is_signal = names_.find(word, atom.place);
    const std::string op = comparison();
    if (!is_signal && word == "instant") {
      atom.kind = Atom::instant;
      atom.text = op;
      if (op.empty() || !number(atom.number))
        throw ConditionError{at_ + 1, "\"instant\" is compared with a number: instant >= 7"};
    } else if (!is_signal) {
      throw ConditionError{begin + 1,
                           '"' + word + "\" is no signal of the module" + names_.hint(word)};
    } else if (op == "=" || op == "==") {
      atom.kind = Atom::value;
      atom.text = value();
    } else if (!op.empty()) {
      throw ConditionError{at_, "a signal's value is compared by \"=\" alone"};
    }
    for (char c : "a" + std::to_string(atoms.size())) put(c, begin);
    atoms.push_back(atom);
  }

  void blanks() {
    while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_])) != 0) ++at_;
  }

  /// Empty, and nothing is taken, where none stands here.
  std::string comparison() {
    const size_t begin = at_;
    blanks();
    for (const char* op : {"==", "!=", "<=", ">=", "=", "<", ">"}) {
      if (text_.compare(at_, std::char_traits<char>::length(op), op) != 0) continue;
      at_ += std::char_traits<char>::length(op);
      return op;
    }
    at_ = begin;
    return "";
  }

  bool number(long& result) {
    blanks();
    const size_t begin = at_;
    while (at_ < text_.size() && std::isdigit(static_cast<unsigned char>(text_[at_])) != 0) ++at_;
    if (begin == at_ || at_ - begin > 18) return false;
    result = std::stol(text_.substr(begin, at_ - begin));
    return true;
  }

  std::string value() {
    blanks();
    const size_t begin = at_;
    if (at_ < text_.size() && text_[at_] == '"') {
      const size_t end = text_.find('"', at_ + 1);
      if (end == std::string::npos) throw ConditionError{at_ + 1, "a \" without its end"};
      at_ = end + 1;
      return text_.substr(begin + 1, end - begin - 1);
    }
    while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_])) == 0 &&
           text_[at_] != ')' && text_[at_] != ']')
      ++at_;
    if (begin == at_) throw ConditionError{at_ + 1, "a value is awaited behind \"=\""};
    return text_.substr(begin, at_ - begin);
  }

  const std::string& text_;
  const SignalNames& names_;
  size_t at_ = 0;
};

}  // namespace

struct Condition::Form {
  std::vector<Atom> atoms;  ///< by variable index
  bddpp_manager manager;
  bdd function;
  std::vector<int> context;
};

Condition::Condition(const std::string& text, const Simulation& simulation)
    : text_(text), form_(std::make_unique<Form>()) {
  const SignalNames names(simulation);
  AtomScanner scanner(text_, names);
  scanner.run();
  for (size_t i = 0; i < scanner.atoms.size(); ++i)
    form_->manager.New_var_last("a" + std::to_string(i));
  std::string plain = scanner.plain;
  plain.erase(plain.find_last_not_of(" \t\r\n") + 1);
  TextStream told;
  class_exp_bdd_parser parser(&form_->manager, told);
  if (parser.parse(plain) != 0 || parser.prio() != 0) {
    if (parser.fault() == ExpressionFault::too_deep) throw ConditionError{1, "nested too deep"};
    const size_t at = parser.position();
    if (parser.current_piece().empty() || at >= scanner.place.size())
      throw ConditionError{text_.size() + 1, "the expression ends too early"};
    const size_t character = scanner.place[at];
    throw ConditionError{character + 1, '"' + text_.substr(character, 1) + "\" cannot stand here"};
  }
  form_->function = parser.bddexpression();
  form_->context.resize(scanner.atoms.size());
  form_->atoms = std::move(scanner.atoms);
}

Condition::~Condition() = default;
Condition::Condition(Condition&&) noexcept = default;
Condition& Condition::operator=(Condition&&) noexcept = default;

bool Condition::holds(const SimulationState& state) const {
  for (size_t i = 0; i < form_->atoms.size(); ++i) {
    const Atom& atom = form_->atoms[i];
    const bool present =
        atom.kind != Atom::instant && shown_state(state, atom.place) == SignalState::one;
    form_->context[i] = atom.kind == Atom::instant
                            ? compares(state.instant, atom.text, atom.number)
                            : present && (atom.kind == Atom::presence ||
                                          shown_value(state, atom.place) == atom.text);
  }
  return form_->manager.Bdd_eval_for_literal(form_->function, form_->context.data()) == 1;
}

std::vector<SignalPlace> Condition::signals() const {
  std::vector<SignalPlace> places;
  for (const Atom& atom : form_->atoms)
    if (atom.kind != Atom::instant) places.push_back(atom.place);
  return places;
}

}  // namespace kiva

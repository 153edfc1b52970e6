// A condition is a diagram over atoms: a signal's presence, a comparison of the instant's number, a
// value that is awaited. The text's own scanner takes the atoms out and puts a made name in their
// place; what is left is plain expression text, and means there what it means everywhere.

#include "engine/condition_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "base/text_stream.h"
#include "bdd/expression_parser.h"

namespace kiva {

namespace {

bool is_letter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || (c & 0x80) != 0;
}

/// Takes the atoms out of a text.
class AtomScanner {
 public:
  AtomScanner(const std::string& text, const SignalNames& names,
              const ConditionText::Extras& extras)
      : text_(text), names_(names), extras_(extras) {}

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

  std::vector<ConditionAtom> atoms;
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
    ConditionAtom atom;
    const bool is_signal = names_.find(word, atom.place);
    if (extras_.before && at_ < text_.size() && text_[at_] == '\'') {
      ++at_;
      atom.before = true;
    }
    complete(atom, is_signal, word, begin);
    for (char c : "a" + std::to_string(atoms.size())) put(c, begin);
    atoms.push_back(atom);
  }

  /// Reads what may stand behind the word.
  void complete(ConditionAtom& atom, bool is_signal, const std::string& word, size_t begin) {
    const std::string op = comparison();
    if (!is_signal && word == "instant") {
      atom.kind = ConditionAtom::instant;
      atom.text = op;
      if (op.empty() || !number(atom.number))
        throw ConditionError{at_ + 1, "\"instant\" is compared with a number: instant >= 7"};
    } else if (!is_signal && extras_.variable && extras_.variable(word)) {
      atom.kind = ConditionAtom::variable;
      atom.text = word;
    } else if (!is_signal) {
      throw ConditionError{begin + 1,
                           '"' + word + "\" is no signal of the module" + names_.hint(word)};
    } else if (op == "=" || op == "==") {
      atom.kind = ConditionAtom::value;
      atom.text = value();
    } else if (!op.empty()) {
      throw ConditionError{at_, "a signal's value is compared by \"=\" alone"};
    }
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
  const ConditionText::Extras& extras_;
  size_t at_ = 0;
};

}  // namespace

ConditionText::ConditionText(const std::string& text, const SignalNames& names,
                             const Extras& extras) {
  AtomScanner scanner(text, names, extras);
  scanner.run();
  for (size_t i = 0; i < scanner.atoms.size(); ++i) manager_.New_var_last("a" + std::to_string(i));
  std::string plain = scanner.plain;
  plain.erase(plain.find_last_not_of(" \t\r\n") + 1);
  TextStream told;
  class_exp_bdd_parser parser(&manager_, told);
  if (parser.parse(plain) != 0 || parser.prio() != 0) {
    if (parser.fault() == ExpressionFault::too_deep) throw ConditionError{1, "nested too deep"};
    const size_t at = parser.position();
    if (parser.current_piece().empty() || at >= scanner.place.size())
      throw ConditionError{text.size() + 1, "the expression ends too early"};
    const size_t character = scanner.place[at];
    throw ConditionError{character + 1, '"' + text.substr(character, 1) + "\" cannot stand here"};
  }
  function_ = parser.bddexpression();
  atoms_ = std::move(scanner.atoms);
}

}  // namespace kiva

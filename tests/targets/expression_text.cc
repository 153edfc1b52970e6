#include "tests/targets/expression_text.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <stdexcept>

namespace kiva::test {

Words::Words(const std::string& text, const std::string& name_signs) {
  const auto in_name = [&](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' ||
           name_signs.find(c) != std::string::npos;
  };
  for (size_t i = 0; i < text.size();) {
    const char c = text[i];
    size_t end = i + 1;
    if (std::isspace(static_cast<unsigned char>(c))) {
      i = end;
      continue;
    }
    if (c == '%' || text.compare(i, 2, "--") == 0) {
      i = std::min(text.find('\n', i), text.size());
      continue;
    }
    if (in_name(c)) {
      const bool number = std::isdigit(static_cast<unsigned char>(c));
      while (end < text.size() && (in_name(text[end]) || (number && text[end] == '.'))) ++end;
    } else {
      for (const char* sign : {"->", ":=", "||", "<>", "!=", "<=", ">=", ".."})
        if (text.compare(i, 2, sign) == 0) end = i + 2;
    }
    words_.push_back(text.substr(i, end - i));
    i = end;
  }
}

const std::string& Words::peek(size_t ahead) const {
  static const std::string none;
  return position_ + ahead < words_.size() ? words_[position_ + ahead] : none;
}

std::string Words::next() {
  if (at_end()) fail("the end");
  return words_[position_++];
}

bool Words::accept(const std::string& word) {
  if (peek() != word) return false;
  ++position_;
  return true;
}

void Words::expect(const std::string& word) {
  if (!accept(word)) fail("no \"" + word + "\"");
}

std::string Words::name(const std::vector<std::string>& keywords) {
  const std::string& word = peek();
  if (word.empty() || !(std::isalpha(static_cast<unsigned char>(word[0])) || word[0] == '_'))
    fail("no name");
  if (std::find(keywords.begin(), keywords.end(), word) != keywords.end()) fail("a keyword");
  return next();
}

void Words::fail(const std::string& what) const {
  std::string place;
  for (size_t i = position_ < 5 ? 0 : position_ - 5; i < std::min(position_ + 5, words_.size());
       ++i)
    place += (i == position_ ? " >>> " : " ") + words_[i];
  throw std::runtime_error(what + " at" + place);
}

namespace {

using Operation = double (*)(double, double);

/// Left-associative operators by strength.
const std::vector<std::map<std::string, Operation>> levels = {
    {{"or", [](double a, double b) -> double { return a != 0 || b != 0; }},
     {"|", [](double a, double b) -> double { return a != 0 || b != 0; }}},
    {{"and", [](double a, double b) -> double { return a != 0 && b != 0; }},
     {"&", [](double a, double b) -> double { return a != 0 && b != 0; }}},
    {{"=", [](double a, double b) -> double { return a == b; }},
     {"<>", [](double a, double b) -> double { return a != b; }},
     {"!=", [](double a, double b) -> double { return a != b; }},
     {"<", [](double a, double b) -> double { return a < b; }},
     {"<=", [](double a, double b) -> double { return a <= b; }},
     {">", [](double a, double b) -> double { return a > b; }},
     {">=", [](double a, double b) -> double { return a >= b; }}},
    {{"+", [](double a, double b) { return a + b; }},
     {"-", [](double a, double b) { return a - b; }}},
    {{"*", [](double a, double b) { return a * b; }},
     {"/", [](double a, double b) { return a / b; }}}};
constexpr size_t comparisons = 2;  // "not" binds as weakly

class Reader {
 public:
  Reader(Words& words, const std::vector<std::string>& keywords)
      : words_(words), keywords_(keywords) {}

  Expression choice() {
    if (!words_.accept("if")) return arrow();
    const Expression test = choice();
    words_.expect("then");
    const Expression yes = choice();
    words_.expect("else");
    return [=, no = choice()](const Meaning& m) { return test(m) != 0 ? yes(m) : no(m); };
  }

 private:
  Expression arrow() {
    const Expression first = infix(0);
    if (!words_.accept("->")) return first;
    return [=, later = arrow()](const Meaning& m) { return m.first_instant ? first(m) : later(m); };
  }

  Expression infix(size_t level) {
    if (level == levels.size()) return prefix();
    if (level == comparisons && (words_.accept("not") || words_.accept("!")))
      return [e = infix(level)](const Meaning& m) { return e(m) == 0; };
    std::vector<Expression> parts{infix(level + 1)};
    std::vector<Operation> operations;
    for (auto at = levels[level].find(words_.peek()); at != levels[level].end();
         at = levels[level].find(words_.peek())) {
      words_.next();
      operations.push_back(at->second);
      parts.push_back(infix(level + 1));
    }
    if (operations.empty()) return parts[0];
    // All parts are evaluated, so that what each reads must exist.
    return [=](const Meaning& m) {
      double result = parts[0](m);
      for (size_t i = 0; i < operations.size(); ++i)
        result = operations[i](result, parts[i + 1](m));
      return result;
    };
  }

  Expression prefix() {
    if (words_.accept("-")) return [e = prefix()](const Meaning& m) { return -e(m); };
    if (words_.accept("pre"))
      return [e = prefix()](const Meaning& m) {
        if (m.first_instant) throw std::runtime_error("pre in the first instant");
        return e({m.value_before, nullptr, m.functions});
      };
    if (words_.accept("(")) {
      const Expression e = choice();
      words_.expect(")");
      return e;
    }
    const std::string word = words_.peek();
    const bool is_keyword = std::find(keywords_.begin(), keywords_.end(), word) != keywords_.end();
    const bool yes = word == "true" || word == "TRUE" || word == "tick";
    if (is_keyword && (yes || word == "false" || word == "FALSE")) {
      words_.next();
      return [yes](const Meaning&) { return yes; };
    }
    if (!word.empty() && std::isdigit(static_cast<unsigned char>(word[0])))
      return [number = std::stod(words_.next())](const Meaning&) { return number; };
    const std::string name = words_.name(keywords_);
    if (!words_.accept("(")) return [name](const Meaning& m) { return m.value(name); };
    return call(name);
  }

  Expression call(const std::string& name) {
    std::vector<Expression> parts;
    while (!words_.accept(")")) {
      parts.push_back(choice());
      if (words_.peek() != ")") words_.expect(",");
    }
    return [=](const Meaning& m) {
      std::vector<double> arguments;
      for (const Expression& part : parts) arguments.push_back(part(m));
      return m.functions.at(name)(arguments);
    };
  }

  Words& words_;
  const std::vector<std::string>& keywords_;
};

}  // namespace

Expression read_expression(Words& words, const std::vector<std::string>& keywords) {
  return Reader(words, keywords).choice();
}

Expression delayed(Expression first, const std::string& name) {
  return [=](const Meaning& m) { return m.first_instant ? first(m) : m.value_before(name); };
}

void Equations::define(const std::string& name, Expression expression) {
  if (!expressions_.emplace(name, std::move(expression)).second)
    throw std::runtime_error("defined twice: " + name);
}

double Equations::value(const std::string& name) {
  if (const auto at = values_.find(name); at != values_.end()) return at->second;
  const auto found = expressions_.find(name);
  if (found == expressions_.end()) throw std::runtime_error("not defined: " + name);
  bool& open = open_[name];
  if (open) throw std::runtime_error("a cycle through " + name);
  open = true;
  const double result =
      found->second({[this](const std::string& n) { return value(n); },
                     [this](const std::string& n) { return before_.at(n); }, functions, first_});
  open = false;
  return values_[name] = result;
}

void Equations::step() {
  for (const auto& [name, expression] : expressions_) value(name);
  before_ = std::move(values_);
  values_.clear();
  first_ = false;
}

std::map<std::string, std::string> written_names(const std::string& told) {
  static const std::regex line("signal \"(.*)\" is written as \"(.*)\"");
  std::map<std::string, std::string> names;
  for (std::sregex_iterator at(told.begin(), told.end(), line), end; at != end; ++at)
    names[(*at)[1]] = (*at)[2];
  return names;
}

}  // namespace kiva::test

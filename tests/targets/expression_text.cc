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
    if (text.compare(i, 2, "--") == 0) {
      i = std::min(text.find('\n', i), text.size());
      continue;
    }
    if (in_name(c)) {
      const bool number = std::isdigit(static_cast<unsigned char>(c));
      while (end < text.size() && (in_name(text[end]) || (number && text[end] == '.'))) ++end;
    } else {
      for (const char* sign : {"->", ":=", "||", "<>", "<=", ">=", ".."})
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

Tree join(const std::string& sign, Tree first, Tree second) {
  auto tree = std::make_unique<ExpressionTree>();
  tree->sign = sign;
  tree->parts.push_back(std::move(first));
  if (second != nullptr) tree->parts.push_back(std::move(second));
  return tree;
}

Tree name_tree(const std::string& name) {
  auto tree = std::make_unique<ExpressionTree>();
  tree->sign = "name";
  tree->text = name;
  return tree;
}

Tree constant(bool value) {
  auto tree = std::make_unique<ExpressionTree>();
  tree->sign = "number";
  tree->number = value ? 1 : 0;
  return tree;
}

namespace {

class Reader {
 public:
  Reader(Words& words, const std::vector<std::string>& keywords)
      : words_(words), keywords_(keywords) {}

  Tree choice() {
    if (!words_.accept("if")) return arrow();
    Tree tree = node("if");
    add(tree, choice());
    words_.expect("then");
    add(tree, choice());
    words_.expect("else");
    add(tree, choice());
    return tree;
  }

 private:
  static Tree node(const std::string& sign) {
    auto tree = std::make_unique<ExpressionTree>();
    tree->sign = sign;
    return tree;
  }
  static void add(Tree& tree, Tree part) { tree->parts.push_back(std::move(part)); }

  Tree arrow() {
    Tree left = infix(0);
    if (!words_.accept("->")) return left;
    Tree tree = node("->");
    add(tree, std::move(left));
    add(tree, arrow());
    return tree;
  }

  /// Left-associative operators by strength.
  Tree infix(size_t level) {
    static const std::vector<std::map<std::string, std::string>> levels = {
        {{"or", "or"}, {"|", "or"}},
        {{"and", "and"}, {"&", "and"}},
        {{"=", "="}, {"<>", "<>"}, {"<", "<"}, {"<=", "<="}, {">", ">"}, {">=", ">="}},
        {{"+", "+"}, {"-", "-"}},
        {{"*", "*"}, {"/", "/"}}};
    if (level == levels.size()) return prefix();
    if (level == 2 && (words_.peek() == "not" || words_.peek() == "!")) {
      words_.next();
      Tree tree = node("not");
      add(tree, infix(2));
      return tree;
    }
    Tree left = infix(level + 1);
    bool joined = false;  // the node is one of this chain, not of an operand in brackets
    for (auto at = levels[level].find(words_.peek()); at != levels[level].end();
         at = levels[level].find(words_.peek())) {
      words_.next();
      // A sum of thousands of products is one node, not a tree as deep.
      const bool goes_on = level < 2 && joined && left->sign == at->second;
      Tree tree = goes_on ? std::move(left) : node(at->second);
      if (!goes_on) add(tree, std::move(left));
      add(tree, infix(level + 1));
      left = std::move(tree);
      joined = true;
    }
    return left;
  }

  Tree prefix() {  // house: one case a form
    for (const char* sign : {"-", "pre"})
      if (words_.accept(sign)) {
        Tree tree = node(sign == std::string("-") ? "minus" : sign);
        add(tree, prefix());
        return tree;
      }
    if (words_.accept("(")) {
      Tree tree = choice();
      words_.expect(")");
      return tree;
    }
    Tree tree = node("number");
    const std::string word = words_.peek();
    const bool is_keyword = std::find(keywords_.begin(), keywords_.end(), word) != keywords_.end();
    const bool yes = word == "true" || word == "TRUE" || word == "tick";
    if (is_keyword && (yes || word == "false" || word == "FALSE")) {
      tree->number = yes;
      words_.next();
    } else if (!word.empty() && std::isdigit(static_cast<unsigned char>(word[0]))) {
      tree->number = std::stod(words_.next());
    } else {
      tree->sign = "name";
      tree->text = words_.name(keywords_);
      if (!words_.accept("(")) return tree;
      tree->sign = "call";
      while (!words_.accept(")")) {
        add(tree, choice());
        if (words_.peek() != ")") words_.expect(",");
      }
    }
    return tree;
  }

  Words& words_;
  const std::vector<std::string>& keywords_;
};

}  // namespace

Tree read_expression(Words& words, const std::vector<std::string>& keywords) {
  return Reader(words, keywords).choice();
}

double evaluate(const ExpressionTree& e, const Meaning& m) {  // house: one case an operator
  const auto part = [&](size_t i) { return evaluate(*e.parts[i], m); };
  const std::string& s = e.sign;
  if (s == "number") return e.number;
  if (s == "name") return m.value(e.text);
  if (s == "not") return part(0) == 0;
  // All parts are evaluated, so that what each reads must exist.
  if (s == "or" || s == "and") {
    size_t ones = 0;
    for (size_t i = 0; i < e.parts.size(); ++i) ones += part(i) != 0 ? 1 : 0;
    return s == "or" ? ones > 0 : ones == e.parts.size();
  }
  if (s == "if") return part(0) != 0 ? part(1) : part(2);
  if (s == "->") return m.first_instant ? part(0) : part(1);
  if (s == "pre") {
    if (m.first_instant) throw std::runtime_error("pre in the first instant");
    return evaluate(*e.parts[0], {m.value_before, nullptr, m.functions});
  }
  if (s == "minus") return -part(0);
  if (s == "call") {
    std::vector<double> arguments;
    for (size_t i = 0; i < e.parts.size(); ++i) arguments.push_back(part(i));
    return m.functions.at(e.text)(arguments);
  }
  const double left = part(0), right = part(1);
  if (s == "=") return left == right;
  if (s == "<>") return left != right;
  if (s == "<") return left < right;
  if (s == "<=") return left <= right;
  if (s == ">") return left > right;
  if (s == ">=") return left >= right;
  if (s == "+") return left + right;
  if (s == "-") return left - right;
  if (s == "*") return left * right;
  if (s == "/") return left / right;
  throw std::runtime_error("operator " + s);
}

void Equations::define(const std::string& name, Tree tree) {
  if (!trees_.emplace(name, std::move(tree)).second)
    throw std::runtime_error("defined twice: " + name);
}

double Equations::value(const std::string& name) {
  if (const auto at = values_.find(name); at != values_.end()) return at->second;
  const auto tree = trees_.find(name);
  if (tree == trees_.end()) throw std::runtime_error("not defined: " + name);
  bool& open = open_[name];
  if (open) throw std::runtime_error("a cycle through " + name);
  open = true;
  const double result = evaluate(
      *tree->second, {[this](const std::string& n) { return value(n); },
                      [this](const std::string& n) { return before_.at(n); }, functions, first_});
  open = false;
  return values_[name] = result;
}

void Equations::step() {
  for (const auto& [name, tree] : trees_) value(name);
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

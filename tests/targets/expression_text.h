#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kiva::test {

/// The words of a text: names, numbers, and signs of one or two characters. Comments from "--" to
/// the end of a line are left out. `name_signs` belong to names beside letters, digits and "_".
class Words {
 public:
  explicit Words(const std::string& text, const std::string& name_signs = "");
  const std::string& peek(size_t ahead = 0) const;
  std::string next();
  bool accept(const std::string& word);
  /// std::runtime_error, with the place, where another word stands.
  void expect(const std::string& word);
  /// A name that is none of `keywords`; std::runtime_error otherwise.
  std::string name(const std::vector<std::string>& keywords);
  bool at_end() const { return position_ >= words_.size(); }
  [[noreturn]] void fail(const std::string& what) const;

 private:
  std::vector<std::string> words_;
  size_t position_ = 0;
};

/// An expression over truth values and numbers: if-then-else, "->", or, and, not, comparisons,
/// sums, products, pre, calls, from the weakest to the strongest; or, and, not also as "|", "&",
/// "!".
struct ExpressionTree {
  std::string sign;  ///< the operator, "call", "name" or "number"
  std::string text;  ///< of a name or a call
  double number = 0;
  std::vector<std::unique_ptr<ExpressionTree>> parts;
};
using Tree = std::unique_ptr<ExpressionTree>;
/// Trees of parts, and of a name or a constant.
Tree join(const std::string& sign, Tree first, Tree second = nullptr);
Tree name_tree(const std::string& name);
Tree constant(bool value);
Tree read_expression(Words& words, const std::vector<std::string>& keywords);

/// What an expression means at an instant.
struct Meaning {
  std::function<double(const std::string& name)> value;
  std::function<double(const std::string& name)> value_before;  ///< at the instant before
  std::map<std::string, std::function<double(const std::vector<double>&)>> functions = {};
  bool first_instant = false;
};
double evaluate(const ExpressionTree& e, const Meaning& meaning);

/// Named expressions that read one another, evaluated once an instant each. std::runtime_error for
/// a name that is defined twice or not at all, and for a cycle.
class Equations {
 public:
  void define(const std::string& name, Tree tree);
  bool defines(const std::string& name) const { return trees_.contains(name); }
  /// Gives a name its value for this instant.
  void set(const std::string& name, double value) { values_[name] = value; }
  double value(const std::string& name);
  /// Evaluates all, and moves on to the next instant.
  void step();
  std::map<std::string, std::function<double(const std::vector<double>&)>> functions;

 private:
  std::map<std::string, Tree> trees_;
  std::map<std::string, double> values_, before_;
  std::map<std::string, bool> open_;
  bool first_ = true;
};

/// What `tarn` told of changed names: written name by original.
std::map<std::string, std::string> written_names(const std::string& told);

}  // namespace kiva::test

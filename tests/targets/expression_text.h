#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kiva::test {

/// The words of a text: names, numbers, and signs of one or two characters. Comments from "--" or
/// "%" to the end of a line are left out. `name_signs` belong to names beside letters, digits and
/// "_".
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

/// What an expression means at an instant.
struct Meaning {
  std::function<double(const std::string& name)> value;
  std::function<double(const std::string& name)> value_before;  ///< at the instant before
  std::map<std::string, std::function<double(const std::vector<double>&)>> functions = {};
  bool first_instant = false;
};

/// An expression over truth values and numbers.
using Expression = std::function<double(const Meaning&)>;
/// Reads if-then-else, "->", or, and, not, comparisons, sums, products, pre, calls, from the
/// weakest to the strongest; or, and, not also as "|", "&", "!".
Expression read_expression(Words& words, const std::vector<std::string>& keywords);
/// The first value, then that which a name had in the instant before.
Expression delayed(Expression first, const std::string& name);

/// Named expressions that read one another, evaluated once an instant each. std::runtime_error for
/// a name that is defined twice or not at all, and for a cycle.
class Equations {
 public:
  void define(const std::string& name, Expression expression);
  bool defines(const std::string& name) const { return expressions_.contains(name); }
  /// Gives a name its value for this instant.
  void set(const std::string& name, double value) { values_[name] = value; }
  double value(const std::string& name);
  /// Evaluates all, and moves on to the next instant.
  void step();
  std::map<std::string, std::function<double(const std::vector<double>&)>> functions;

 private:
  std::map<std::string, Expression> expressions_;
  std::map<std::string, double> values_, before_;
  std::map<std::string, bool> open_;
  bool first_ = true;
};

/// What `tarn` told of changed names: written name by original.
std::map<std::string, std::string> written_names(const std::string& told);

}  // namespace kiva::test

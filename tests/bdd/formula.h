#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <string>

namespace kiva::test {

/// Evaluates a boolean formula from its text, in any of the syntaxes that are written here: or as
/// "or", "||", "|", "+"; and as "and", "&&", "&", "."; negation before a factor as "not", "!", "~"
/// or behind a name as "'"; names with an index in "[]" or "()"; 0, 1, '0', '1', TRUE.
class Formula {
 public:
  using Values = std::map<std::string, bool>;

  /// Fails the test on what is no formula, and on a name without value.
  static bool value(const std::string& text, const Values& values) {
    Formula f(text, values);
    const bool result = f.sum();
    f.skip();
    if (f.at_ != text.size()) ADD_FAILURE() << "rest \"" << text.substr(f.at_) << "\" of " << text;
    return result;
  }

 private:
  Formula(const std::string& text, const Values& values) : text_(text), values_(values) {}

  void skip() {
    while (at_ < text_.size() && text_[at_] == ' ') ++at_;
  }
  static bool is_word(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }
  bool take(const std::string& token) {
    skip();
    if (text_.compare(at_, token.size(), token) != 0) return false;
    const size_t end = at_ + token.size();
    if (is_word(token.back()) && end < text_.size() && is_word(text_[end])) return false;
    at_ = end;
    return true;
  }
  bool sum() {
    bool result = product();
    while (take("||") || take("|") || take("+") || take("or")) {
      const bool right = product();
      result = result || right;
    }
    return result;
  }
  bool product() {
    bool result = factor();
    while (take("&&") || take("&") || take(".") || take("and")) {
      const bool right = factor();
      result = result && right;
    }
    return result;
  }
  bool factor() {
    if (take("not") || take("!") || take("~")) return !factor();
    if (take("'1'") || take("1") || take("TRUE")) return true;
    if (take("'0'") || take("0")) return false;
    if (take("(")) {
      const bool result = sum();
      if (!take(")")) ADD_FAILURE() << "no bracket at \"" << text_.substr(at_) << "\" of " << text_;
      return result;
    }
    skip();
    std::string name;
    while (at_ < text_.size() && is_word(text_[at_])) name += text_[at_++];
    if (at_ < text_.size() && (text_[at_] == '[' || text_[at_] == '(')) {
      const char close = text_[at_] == '[' ? ']' : ')';
      while (at_ < text_.size() && text_[at_] != close) name += text_[at_++];
      if (at_ < text_.size()) name += text_[at_++];
    }
    const auto found = values_.find(name);
    if (found == values_.end()) {
      ADD_FAILURE() << "no value for \"" << name << "\" in " << text_;
      return false;
    }
    return take("'") ? !found->second : found->second;
  }

  const std::string& text_;
  const Values& values_;
  size_t at_ = 0;
};

}  // namespace kiva::test

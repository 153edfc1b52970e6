// Expression text: the scanner, the parser object, and the manager's two ways in.

#include "bdd/expression_parser.h"

#include <iostream>
#include <unordered_map>

#include "base/Stringpp.h"
#include "parse_expression.hh"

namespace kiva {

thread_local class_exp_bdd_parser* pexp_bdd_parser = nullptr;

class_exp_bdd_parser::class_exp_bdd_parser(bddpp_manager* manager)
    : class_exp_bdd_parser(manager, std::cerr) {}

class_exp_bdd_parser::class_exp_bdd_parser(bddpp_manager* manager, std::ostream& report)
    : manager_(manager), report_(report) {
  pexp_bdd_parser = this;
}

class_exp_bdd_parser::~class_exp_bdd_parser() {
  if (pexp_bdd_parser == this) pexp_bdd_parser = nullptr;
}

int class_exp_bdd_parser::parse(const std::string& text) {
  text_ = rest_ = text;
  piece_.clear();
  position_ = 0;
  priority_ = 0;
  result_ = bdd();
  fault_ = ExpressionFault::none;
  constexpr int stack_full = 2;
  const int result = exp_bddparse();
  if (result == stack_full) {
    fault_ = ExpressionFault::too_deep;
  } else if (result != 0 && fault_ == ExpressionFault::none) {
    fault_ = ExpressionFault::syntax;
  }
  return result;
}

const std::string& class_exp_bdd_parser::next_piece() {
  piece_ = next_Stringtoken(rest_, ' ', rest_);
  position_ = text_.size() - rest_.size() - piece_.size();
  return piece_;
}

void class_exp_bdd_parser::message(const std::string& text) {
  report_ << text << '\n';
}

namespace {

void report_expression(const std::string& text, const std::string& reason) {
  std::cerr << "PARSING ERROR about expression: \"" << text << '"' << reason << '\n';
}

}  // namespace

bdd bddpp_manager::Parse_expression(const std::string& text, int* priority, int* error) {
  *priority = 0;
  *error = 0;
  if (text.empty()) return Bdd_zero();
  *error = 1;
  if (contains(text, "/")) {
    report_expression(text, ": / char detection!");
    return Bdd_zero();
  }
  if (char_occurences(text, '(') != char_occurences(text, ')')) {
    report_expression(text, ": bad parenthesing!");
    return Bdd_zero();
  }
  class_exp_bdd_parser parser(this);
  *error = parser.parse(text);
  if (*error != 0) {
    report_expression(text, "");
    return Bdd_zero();
  }
  *priority = parser.prio();
  return parser.bddexpression();
}

bdd bddpp_manager::Parse_expression(const std::string& text, int* error) {
  int priority = 0;
  const bdd result = Parse_expression(text, &priority, error);
  if (priority == 0) return result;
  report_expression(text, ": unknown symbols '<' and '>' ");
  *error = 1;
  return Bdd_zero();
}

}  // namespace kiva

int exp_bddlex(EXP_BDDSTYPE*) {
  static const std::unordered_map<std::string, int> tokens = {
      {"", END_OF_INPUT},        {"(", TOKEN_PAR_OUVRANTE}, {"[", TOKEN_PAR_OUVRANTE},
      {")", TOKEN_PAR_FERMANTE}, {"]", TOKEN_PAR_FERMANTE}, {"<", TOKEN_INF},
      {">", TOKEN_SUP},          {"and", TOKEN_AND},        {"AND", TOKEN_AND},
      {".", TOKEN_AND},          {"&", TOKEN_AND},          {"or", TOKEN_OR},
      {"OR", TOKEN_OR},          {"+", TOKEN_OR},           {"|", TOKEN_OR},
      {"not", TOKEN_NOT},        {"NOT", TOKEN_NOT},        {"!", TOKEN_NOT},
      {"~", TOKEN_NOT},          {"xor", TOKEN_XOR},        {"XOR", TOKEN_XOR},
      {"xnor", TOKEN_XNOR},      {"XNOR", TOKEN_XNOR},      {"0", TOKEN_ZERO},
      {"1", TOKEN_ONE}};
  const auto found = tokens.find(kiva::pexp_bdd_parser->next_piece());
  return found == tokens.end() ? TOKEN_STRING : found->second;
}

void exp_bdderror(const char* message) {
  kiva::pexp_bdd_parser->message(message);
}

// The checker is a machine of four states:
//
//   1 operand due  --variable, number, bracketed expression-->  2
//                  --operator of kind 1-->  1
//   2 operator due --operator of kind 2-->  1
//                  --closing bracket, end of text-->  3
//   3 done, 4 wrong
//
// An opening bracket starts the machine afresh inside; its end leads the outer one to 2 or 4. The
// outer machines wait on a stack of the heap, so that no text is too deep.

#include "bdd/expressions_checker.h"

#include <iostream>
#include <vector>

#include "base/Stringpp.h"
#include "base/list.h"
#include "base/number_text.h"

namespace kiva {

void expressions_checker::add_operator(const std::string& name, int kind) {
  operators.push_back(name);
  operator_kinds.push_back(kind);
}

void expressions_checker::add_factor(const std::string& open, const std::string& close) {
  factor_openers.push_back(open);
  factor_closers.push_back(close);
}

bool expressions_checker::is_operator(const std::string& piece, int& kind) const {
  const long place = item_where(operators, piece);
  kind = place == 0 ? 0 : read_number(operator_kinds, place);
  return place != 0;
}

int expressions_checker::check(const std::string& text) const {
  int depth = 0, error = 0, position = 1;
  const std::string rest = rec_check(text, &depth, &error, &position);
  return rest.empty() && depth == 0 && error == 0 ? 0 : position;
}

std::string expressions_checker::rec_check(const std::string& text, int* depth, int* error,
                                           int* position) const {  // house: one automaton
  std::string rest = text;
  std::vector<std::string> open;  // the pieces at which outer machines wait
  for (int state = 1;;) {
    std::string piece = next_Stringtoken(rest, ' ', rest);
    std::cerr << "tok=" << piece;
    const bool at_end = piece.empty() || piece == " ";
    int kind = 0;
    if (state == 1) {
      if (at_end) {
        state = 4;
      } else if ((numbers_accepted != 0 && checkuint(piece)) || item_in(variables, piece)) {
        state = 2;
      } else if (is_operator(piece, kind)) {
        state = kind == 1 ? 1 : 4;
      } else if (item_in(factor_openers, piece)) {
        ++*depth;
        open.push_back(piece);
        continue;
      } else {
        state = 4;
      }
    } else if (at_end) {
      state = 3;
    } else if (is_operator(piece, kind)) {
      state = kind == 2 ? 1 : 4;
    } else if (item_in(factor_closers, piece)) {
      --*depth;
      state = 3;
    } else {
      state = 4;
    }
    for (;;) {  // this machine, and those that its end sets going
      std::cerr << " state=" << state << '\n';
      if (state != 3) *position += static_cast<int>(piece.size()) + 1;
      if (state == 4) *error = 1;
      if (state < 3) break;
      if (open.empty()) return rest;
      piece = open.back();
      open.pop_back();
      state = *error != 0 ? 4 : 2;
    }
  }
}

}  // namespace kiva

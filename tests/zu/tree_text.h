#pragma once

#include <string>

namespace kiva {
class DataExpr;
class Expression;
class Statement;
}  // namespace kiva

namespace kiva::test {

// One canonical text for each tree. Every operator has its parentheses, so equal texts mean equal
// trees: "Sn(emit a, Pn(pause, wait (x*np y)))".
std::string tree_text(const Statement* statement);
std::string tree_text(const Expression* expression);
/// Constants and methods by name, "#" before a signal.
std::string tree_text(const DataExpr* data);

}  // namespace kiva::test

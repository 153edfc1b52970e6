#pragma once

#include <functional>

namespace kiva {

class Expression;
class Signal;
class Statement;

/// Each statement of the tree, a statement before its children.
void for_each_statement(const Statement* root, const std::function<void(const Statement&)>& see);
/// Each signal that the expression names, as often as it does.
void for_each_signal(const Expression* root, const std::function<void(const Signal*)>& see);
/// The signal expression that a statement looks at; null for one that looks at none.
const Expression* condition_of(const Statement& statement);

}  // namespace kiva

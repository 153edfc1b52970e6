#pragma once

#include <string>

#include "pert_exp/Bddexpression.h"

namespace kiva {

class Module;
class Signal;

/// The equations that a module, or one of its statements, produces: a wood with the name of its
/// module. The table does not own the wood: a module, or SignalManager::deleteWood, destroys it.
class EquationTable {
 public:
  // Without a wood, each makes one with a manager of its own.
  EquationTable() : EquationTable(std::string()) {}
  explicit EquationTable(const std::string& name) : EquationTable(name, new Bddexpressionwood) {}
  explicit EquationTable(Bddexpressionwood* wood) : EquationTable(std::string(), wood) {}
  EquationTable(const std::string& name, Bddexpressionwood* wood)
      : bdd_expression_wood(wood), module_name(name) {}

  Bddexpressionwood* getBddexpressionWood() const { return bdd_expression_wood; }
  const std::string& getModuleName() const { return module_name; }
  void setModuleName(const std::string& name) { module_name = name; }
  /// The wood's equation of that name, or of the variable of that id.
  Bddexpression* getBddExpression(const std::string& name) const {
    return bdd_expression_wood->exp_by_name(name);
  }
  Bddexpression* getBddExpression(long id) const { return bdd_expression_wood->exp_by_index(id); }
  long getPertLevel() const { return bdd_expression_wood->Nb_level(); }

 private:
  Bddexpressionwood* bdd_expression_wood;
  std::string module_name;
};

}  // namespace kiva

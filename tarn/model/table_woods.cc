// Who destroys a wood. A branch of a statement works on a wood of its own over the manager of its
// module's wood; what interrupts a compilation leaves such woods, and functions that were still to
// be joined onto them, behind. The session knows the tables whose woods they are.

#include <algorithm>

#include "tarn/model/equationtable.h"
#include "tarn/session/session.h"

namespace kiva {

namespace {

/// Tables that own their wood, in order of arrival. The latest go first.
struct Owners {
  std::vector<EquationTable*> tables;

  void remove(const EquationTable* table) {
    const auto at = std::find(tables.rbegin(), tables.rend(), table);
    if (at != tables.rend()) tables.erase(std::next(at).base());
  }
};

Owners& owners() {
  return Session::current().part<Owners>();
}

}  // namespace

void EquationTable::own_wood() {
  if (bdd_expression_wood != nullptr) owners().tables.push_back(this);
}

/// The wood is gone, or another's from here on.
void EquationTable::lose_wood() {
  pending_.clear();
  bdd_expression_wood = nullptr;
  owners().remove(this);
}

EquationTable::~EquationTable() {
  const auto& tables = owners().tables;
  if (bdd_expression_wood == nullptr ||
      std::find(tables.rbegin(), tables.rend(), this) == tables.rend())
    return;
  destroy_wood(bdd_expression_wood);
}

void EquationTable::destroy_wood(Bddexpressionwood* wood) {
  const bddpp_manager* manager = wood->my_bdd_manager();
  const bool with_sharers = wood->get_common_bdd_manager() == 0 && manager != nullptr;
  std::vector<EquationTable*> losers;
  for (EquationTable* table : owners().tables)
    if (table->bdd_expression_wood == wood ||
        (with_sharers && table->bdd_expression_wood->my_bdd_manager() == manager))
      losers.push_back(table);
  for (EquationTable* table : losers) {
    Bddexpressionwood* lost = table->bdd_expression_wood;
    table->lose_wood();
    if (lost != wood) delete lost;
  }
  delete wood;
}

}  // namespace kiva

#include "tarn/zu/passing_locals.h"

#include <algorithm>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"

namespace kiva {

bool is_watched(const Signal* local) {
  if (Compilation::MapFlag() && local->isWire() && !local->isRegister()) return true;
  return Compilation::rules().locals && !Compilation::StripFlag() && local->isDeclared();
}

std::set<const Signal*> register_variables(const Module* module) {
  std::set<const Signal*> variables;
  for (const regclass* reg : module->getRegisterList()) {
    variables.insert(reg->actual_var());
    variables.insert(reg->next_var());
  }
  return variables;
}

PassingLocals::PassingLocals(Module* module, Bddexpressionwood* wood) : wood_(wood) {
  const auto rail = [wood](long index, int protected_type) {
    const Bddexpression* e = wood->exp_by_index(index);
    return Rail{index, e == nullptr ? protected_type : e->getUserType(), protected_type};
  };
  const auto add = [&](const Signal* signal, bool first_is_watched) {
    const std::list<long> indices = signal->getAllBddId(module, wood);
    for (auto at = indices.begin(); at != indices.end();) {
      const long status = *at++;
      const long value = *at++;
      if (std::exchange(first_is_watched, false)) continue;
      pairs_.push_back({rail(status, Compilation::SOUTPUT), rail(value, Compilation::VOUTPUT)});
    }
  };
  const std::set<const Signal*> registers = register_variables(module);
  for (const Signal* output : module->getOutputSignalList())
    if (!output->isValued(module, wood)) add(output, true);
  for (const Signal* local : module->getLocalSignalList())
    if (!local->isWire() && !local->isRegister() && !registers.contains(local) &&
        !local->isValued(module, wood) && !local->isClock() && !local->isValue())
      add(local, is_watched(local));
  protect();
}

template <class See>
void PassingLocals::for_each_rail(See see) {
  for (const auto& [status, value] : pairs_)
    for (const Rail& rail : {status, value})
      if (Bddexpression* e = wood_->exp_by_index(rail.index); e != nullptr) see(rail, *e);
}

void PassingLocals::may_be_inlined() {
  for_each_rail([this](const Rail& rail, Bddexpression& e) {
    if (e.getAbstraction() == 0 && !wood_->Bdd_is_tautology(e.my_bdd_exp(), 0) &&
        !wood_->Bdd_is_tautology(e.my_bdd_exp(), 1))
      e.setUserType(rail.type);
  });
}

void PassingLocals::protect() {
  for_each_rail([](const Rail& rail, Bddexpression& e) {
    if (e.getAbstraction() == 0) e.setUserType(rail.protected_type);
  });
}

/// Can the rail be put into its readers, and do they stay small whatever they become?
bool PassingLocals::is_small(const Bddexpression& e, long index) const {
  constexpr size_t most_variables = 10, most_readers = 8;
  const index_set& reads = e.set_of_var_dependances();
  const index_set& readers = wood_->set_of_amont_dependances(index);
  const auto stays_small = [&](long reader) {
    const Bddexpression* by = wood_->exp_by_index(reader);
    return by != nullptr && by->set_of_var_dependances().size() + reads.size() <= most_variables;
  };
  return !reads.contains(index) && readers.size() <= most_readers &&
         std::all_of(readers.begin(), readers.end(), stays_small);
}

/// Gives the function of a rail that it has put into its readers.
std::optional<bdd> PassingLocals::inline_rail(const Rail& rail) {
  const Bddexpression* e = wood_->exp_by_index(rail.index);
  if (e == nullptr || e->getAbstraction() != 0) return std::nullopt;
  const bdd function = e->my_bdd_exp();
  if (Compilation::StripFlag() && is_small(*e, rail.index)) {
    wood_->suppress_local(rail.index);
  } else {
    wood_->suppress_local_that_shrinks(rail.index);
  }
  if (wood_->exp_by_index(rail.index) != nullptr) return std::nullopt;
  return function;
}

std::vector<long> PassingLocals::pass_on() {
  std::vector<long> kept;
  for (const auto& [status, value] : pairs_) {
    const auto status_function = inline_rail(status), value_function = inline_rail(value);
    // Where one of them stays, so does the other.
    const bool stay = wood_->exp_by_index(status.index) != nullptr;
    if (stay == (wood_->exp_by_index(value.index) != nullptr)) continue;
    const Rail& gone = stay ? value : status;
    if (const auto& function = stay ? value_function : status_function)
      new Bddexpression(wood_->Name_var_by_index(gone.index), wood_,
                        wood_->Bdd_var_by_index(gone.index), *function, 0, 0, gone.type);
  }
  for_each_rail([](const Rail& rail, Bddexpression& e) { e.setUserType(rail.type); });
  const auto read_by_others = [this](const Rail& rail, const Rail& twin) {
    const index_set& readers = wood_->set_of_amont_dependances(rail.index);
    return std::any_of(readers.begin(), readers.end(),
                       [&](long reader) { return reader != twin.index; });
  };
  for (const auto& [status, value] : pairs_) {
    if (read_by_others(status, value) || read_by_others(value, status)) {
      kept.insert(kept.end(), {status.index, value.index});
      continue;
    }
    // One of them may read the other.
    for (long index : {value.index, status.index, value.index})
      if (wood_->exp_by_index(index) != nullptr) wood_->forget_expression_by_bddid(index);
  }
  return kept;
}

namespace {

/// Neither a status nor a reader.
bool is_silent(const Signal* local, Module* module, Bddexpressionwood* wood) {
  const std::list<long> indices = local->getAllBddId(module, wood);
  const auto is_own = [&](long index) {
    return std::find(indices.begin(), indices.end(), index) != indices.end();
  };
  for (auto at = indices.begin(); at != indices.end(); ++at) {
    const bool is_status = std::distance(indices.begin(), at) % 2 == 0;
    const index_set& readers = wood->set_of_amont_dependances(*at);
    if ((is_status && wood->exp_by_index(*at) != nullptr) ||
        !std::all_of(readers.begin(), readers.end(), is_own))
      return false;
  }
  return true;
}

/// A wire is True or False: its value, which nothing reads, has gone.
void complete_wire(const Signal* wire, Module* module, Bddexpressionwood* wood) {
  const long status = wire->getBddStatusId(module, wood);
  const long value = wire->getBddValueId(module, wood);
  if (wood->exp_by_index(status) == nullptr || wood->exp_by_index(value) != nullptr) return;
  new Bddexpression(wire->getInternalName(), wood, wood->Bdd_var_by_index(value),
                    wood->Bdd_not(wood->Bdd_var_by_index(status)), 0, 0, Compilation::VAL);
}

}  // namespace

void forget_silent_locals(Module* module, Bddexpressionwood* wood) {
  const std::set<const Signal*> registers = register_variables(module);
  signal_list kept;
  for (Signal* local : module->getLocalSignalList()) {
    const bool stays = registers.contains(local) || local->isValued(module, wood) ||
                       local->isClock() || !is_silent(local, module, wood);
    if (stays) {
      if (local->isWire() && !registers.contains(local)) complete_wire(local, module, wood);
      kept.push_back(local);
      continue;
    }
    for (long index : local->getAllBddId(module, wood))
      if (wood->exp_by_index(index) != nullptr) wood->forget_expression_by_bddid(index);
  }
  module->setLocalSignalList(std::move(kept));
}

}  // namespace kiva

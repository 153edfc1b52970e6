// A signal is in its state because of an implicant of a function: "the two rails are what they
// are", unfolded over what an instant starts from. Of all implicants that hold in the instant the
// one with the fewest signals is looked for: at the top signal of a function either both its rails
// are fixed as they are, at the price of one, or it is quantified away, for nothing, where what is
// left still holds. That search is exponential at worst; past a bound the same step is taken
// without looking back, which gives a set of which nothing can be spared but which need not be the
// smallest.

#include "engine/why.h"

#include <algorithm>

#include "pert_exp/unfold.h"

namespace kiva {

namespace {

constexpr long most_steps = 20000;

/// The two variables of a signal; `value` is -1 for a variable that stands alone.
struct Rails {
  long status;
  long value;
  bool opposite;  ///< never equal: of a wire that is raised or not
};

/// The search over one function and one instant.
class Implicant {
 public:
  Implicant(bddpp_manager& manager, const std::vector<int>& context,
            const std::function<Rails(long)>& rails)
      : manager_(manager), context_(context), rails_(rails) {}

  /// The status index of each signal kept, for a function that holds in the instant.
  std::vector<long> of(const bdd& f) {
    const Best best = search(f);
    return steps_ <= most_steps ? best.kept : without_looking_back(f);
  }

 private:
  struct Best {
    std::vector<long> kept;
  };
  using Key = std::pair<const bdd_node*, int>;

  bool holds(const bdd& f) { return manager_.Bdd_eval_for_literal(f, context_.data()) == 1; }

  bool is_known(Rails rails) const {
    return context_[static_cast<size_t>(rails.status)] != 2 &&
           (rails.value < 0 || context_[static_cast<size_t>(rails.value)] != 2);
  }

  bdd literal(long index) {
    const bdd variable = manager_.Bdd_var_by_index(index);
    return context_[static_cast<size_t>(index)] == 1 ? variable : manager_.Bdd_not(variable);
  }
  bdd fixed(const bdd& f, Rails rails) {
    bdd cube = literal(rails.status);
    if (rails.value >= 0) cube = manager_.Bdd_and(cube, literal(rails.value));
    return manager_.Bdd_cube_reduce(f, cube);
  }
  bdd whatever(const bdd& f, Rails rails) {
    const bdd status = manager_.Bdd_var_by_index(rails.status);
    if (rails.value < 0) return manager_.Bdd_forall(f, status);
    const bdd value = manager_.Bdd_var_by_index(rails.value);
    if (!rails.opposite) return manager_.Bdd_forall(manager_.Bdd_forall(f, status), value);
    const bdd raised = manager_.Bdd_and(status, manager_.Bdd_not(value));
    const bdd low = manager_.Bdd_and(value, manager_.Bdd_not(status));
    return manager_.Bdd_and(manager_.Bdd_cube_reduce(f, raised), manager_.Bdd_cube_reduce(f, low));
  }

  Best search(const bdd& f) {
    if (manager_.Bdd_is_tautology(f, 1) != 0 || ++steps_ > most_steps) return {};
    const Key key{f.node(), f.link_type()};
    if (const auto known = known_.find(key); known != known_.end()) return known->second.best;
    const Rails rails = rails_(manager_.Bdd_if_index(f));
    const bdd rest = whatever(f, rails);
    const bool spared = holds(rest);
    Best best;
    // What is unknown in the instant is no cause.
    if (!spared || is_known(rails)) {
      best = search(fixed(f, rails));
      best.kept.push_back(rails.status);
    }
    if (spared) {
      Best without = search(rest);
      if (!is_known(rails) || without.kept.size() < best.kept.size()) best = std::move(without);
    }
    known_.emplace(key, Known{f, best});
    return best;
  }

  std::vector<long> without_looking_back(bdd f) {
    std::vector<long> kept;
    while (manager_.Bdd_is_tautology(f, 1) == 0) {
      const Rails rails = rails_(manager_.Bdd_if_index(f));
      const bdd rest = whatever(f, rails);
      const bool spared = holds(rest);
      if (!spared) kept.push_back(rails.status);
      f = spared ? rest : fixed(f, rails);
    }
    return kept;
  }

  struct Known {
    bdd f;  ///< keeps the node
    Best best;
  };

  bddpp_manager& manager_;
  const std::vector<int>& context_;
  const std::function<Rails(long)>& rails_;
  std::map<Key, Known> known_;
  long steps_ = 0;
};

}  // namespace

Reasons::Reasons(const Simulation& simulation)
    : simulation_(&simulation),
      names_(simulation),
      group_of_(simulation.state().context.size(), -1) {
  Module* module = simulation.module();
  const auto add = [&](const std::string& name, SignalRails rails, Cause::Kind kind) {
    if (group_of_[static_cast<size_t>(rails.status_index)] >= 0) return;
    for (long index : {rails.status_index, rails.value_index})
      group_of_[static_cast<size_t>(index)] = static_cast<long>(groups_.size());
    groups_.push_back({name, rails, kind});
  };
  for (const Signal* input : module->getInputSignalList())
    add(input->getOriginalName(), rails_of(module, input), Cause::input);
  add("set", rails_of(module, module->getSet()), Cause::wire);
  add("reset", rails_of(module, module->getReset()), Cause::wire);
  const std::vector<RegisterRails> registers = register_rails(module);
  for (size_t i = 0; i < registers.size(); ++i)
    add(simulation.register_names()[i], registers[i].actual, Cause::register_);
  for (SignalPlace::List list : {SignalPlace::output, SignalPlace::local})
    for (size_t row = 0; row < names_.names(list).size(); ++row)
      add(names_.name({list, row}), rails_of_place({list, row}), Cause::computed);
}

SignalRails Reasons::rails_of_place(SignalPlace place) const {
  Module* module = simulation_->module();
  if (place.list == SignalPlace::input)
    return rails_of(module, simulation_->input_rows()[place.row]);
  if (place.list == SignalPlace::register_) return register_rails(module)[place.row].next;
  SignalRails rails{};
  get_id_signals(module, names_.name(place), rails.status_index, rails.value_index);
  return rails;
}

/// All that the instant's pass started from and gave, before the registers moved.
std::vector<int> Reasons::context_of(const Instant& instant) const {
  Module* module = simulation_->module();
  std::vector<int> context = instant.after.context;
  for (const RegisterRails& reg : register_rails(module)) {
    for (const auto& [from, to] : {std::pair{reg.actual.status_index, reg.next.status_index},
                                   std::pair{reg.actual.value_index, reg.next.value_index}}) {
      context[static_cast<size_t>(to)] = context[static_cast<size_t>(from)];
      context[static_cast<size_t>(from)] = instant.before.context[static_cast<size_t>(from)];
    }
  }
  write_choices(choice_rails(module), instant.choices.set, instant.choices.reset,
                instant.choices.inputs, context.data());
  return context;
}

/// The function that both rails are as they are in the instant.
bdd Reasons::as_it_is(SignalRails rails, const std::vector<int>& context, bool unfold) const {
  const Bddexpressionwood& wood = *simulation_->module()->getBddWood();
  bddpp_manager* manager = wood.my_bdd_manager();
  bdd both = manager->Bdd_one();
  for (long index : {rails.status_index, rails.value_index}) {
    const Bddexpression* e = wood.exp_by_index(index);
    const bool leaf =
        group_of_[static_cast<size_t>(index)] >= 0 &&
        groups_[static_cast<size_t>(group_of_[static_cast<size_t>(index)])].kind != Cause::computed;
    bdd f = manager->Bdd_var_by_index(index);
    if (!leaf && e != nullptr && e->getAbstraction() == 0) f = e->my_bdd_exp();
    if (unfold)
      f = unfolded(wood, f, [&](long other) {
        const long group = group_of_[static_cast<size_t>(other)];
        return group >= 0 && groups_[static_cast<size_t>(group)].kind != Cause::computed;
      });
    both =
        manager->Bdd_and(both, context[static_cast<size_t>(index)] == 1 ? f : manager->Bdd_not(f));
  }
  return both;
}

std::vector<Cause> Reasons::implicant(const bdd& f, const std::vector<int>& context) const {
  Module* module = simulation_->module();
  bddpp_manager* manager = module->getBddWood()->my_bdd_manager();
  const std::function<Rails(long)> rails = [&](long index) -> Rails {
    const long group = group_of_[static_cast<size_t>(index)];
    if (group < 0) return {index, -1, false};
    const Group& of = groups_[static_cast<size_t>(group)];
    return {of.rails.status_index, of.rails.value_index, of.kind == Cause::wire};
  };
  // What is unknown in the instant makes nothing known.
  if (manager->Bdd_eval_for_literal(f, context.data()) != 1) return {};
  std::vector<Cause> causes;
  for (long index : Implicant(*manager, context, rails).of(f)) {
    const long group = group_of_[static_cast<size_t>(index)];
    if (group < 0) {
      causes.push_back(
          {module->getSignalNameById(index, module->getBddWood()),
           context[static_cast<size_t>(index)] == 1 ? SignalState::one : SignalState::zero,
           Cause::computed});
      continue;
    }
    const Group& of = groups_[static_cast<size_t>(group)];
    causes.push_back({of.name,
                      state_of(context[static_cast<size_t>(of.rails.status_index)],
                               context[static_cast<size_t>(of.rails.value_index)]),
                      of.kind});
  }
  std::sort(causes.begin(), causes.end(), [](const Cause& a, const Cause& b) {
    return std::tie(a.kind, a.name) < std::tie(b.kind, b.name);
  });
  return causes;
}

std::vector<Cause> Reasons::causes(SignalPlace signal, const Instant& instant) const {
  const std::vector<int> context = context_of(instant);
  return implicant(as_it_is(rails_of_place(signal), context, true), context);
}

std::vector<Cause> Reasons::step_down(const std::string& name, const Instant& instant) const {
  const std::vector<int> context = context_of(instant);
  for (const Group& group : groups_)
    if (group.name == name && group.kind == Cause::computed)
      return implicant(as_it_is(group.rails, context, false), context);
  return {};
}

}  // namespace kiva

// From nets to signals: an input, an output or a local for each. The two nets of a flip-flop become
// locals that nothing else is: where an input or an output is one of them, or two flip-flops take
// the same net, a copy stands between.

#include "tarn/readers/netlist.h"

#include <algorithm>
#include <list>
#include <unordered_set>

#include "base/graph_walk.h"
#include "pert_exp/Bddexpression.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"

namespace kiva {

int Netlist::net(const std::string& name, int line) {
  const auto [at, made] = numbers_.try_emplace(name, static_cast<int>(nets_.size()));
  if (made) nets_.push_back({name, line});
  return at->second;
}

void Netlist::drive(int net, Driver driver, int line) {
  if (nets_[net].driver != Driver::none)
    throw NetlistError(line, "\"" + nets_[net].name + "\" is driven twice");
  nets_[net].driver = driver;
}

void Netlist::add_input(const std::string& name, int line) {
  const int number = net(name, line);
  drive(number, Driver::input, line);
  inputs_.push_back(number);
}

void Netlist::add_output(const std::string& name, int line) {
  const int number = net(name, line);
  if (nets_[number].output) throw NetlistError(line, "the output \"" + name + "\" stands twice");
  nets_[number].output = true;
  outputs_.push_back(number);
}

void Netlist::add_gate(int net, Gate gate) {
  drive(net, Driver::gate, gate.line);
  nets_[net].gate = static_cast<int>(gates_.size());
  gates_.push_back(std::move(gate));
}

void Netlist::add_latch(int now, int next, bool initial, int line) {
  drive(now, Driver::latch, line);
  latches_.push_back({now, next, initial});
}

class NetlistModule {
 public:
  explicit NetlistModule(const Netlist& list) : list_(list) {}

  Module* make() {
    check();
    module_ = make_kept<Module>(legal(list_.name));
    wood_ = module_->getBddWood();
    signals_.resize(list_.nets_.size(), nullptr);
    signal_list inputs, outputs;
    for (int net : list_.inputs_) inputs.push_back(signals_[net] = declare(list_.nets_[net].name));
    for (int net : list_.outputs_) {
      // An output that is an input has a name of its own.
      Signal* const signal = declare(list_.nets_[net].name);
      if (signals_[net] == nullptr) signals_[net] = signal;
      outputs.push_back(signal);
    }
    for (size_t net = 0; net < list_.nets_.size(); ++net)
      if (signals_[net] == nullptr) signals_[net] = local(list_.nets_[net].name);
    take_latches();
    for (Signal* signal : inputs) signal->setInput();
    for (Signal* signal : outputs) signal->setOutput();
    for (Signal* signal : locals_) signal->setLocal();
    take_wires();
    wood_->update_bdd_vars();
    take_equations(inputs, outputs);
    module_->setInputSignalList(std::move(inputs));
    module_->setOutputSignalList(std::move(outputs));
    module_->setLocalSignalList(std::move(locals_));
    module_->setRegisterList(std::move(registers_));
    module_->setFinalised(1);
    wood_->compute_dates();
    module_->update_user_type();
    return module_;
  }

 private:
  /// Nets that nothing drives, and loops.
  void check() const {
    for (const Netlist::Net& net : list_.nets_)
      if (net.driver == Netlist::Driver::none)
        throw NetlistError(net.line, "nothing drives \"" + net.name + "\"");
    enum : char { unseen, open, done };
    std::vector<char> state(list_.nets_.size(), unseen);
    for (size_t root = 0; root < list_.nets_.size(); ++root) {
      std::vector<int> path{static_cast<int>(root)};
      while (!path.empty()) {
        const int net = path.back();
        if (state[net] != unseen) {
          state[net] = done;
          path.pop_back();
          continue;
        }
        state[net] = open;
        const int gate = list_.nets_[net].gate;
        if (gate < 0) continue;
        for (int read : list_.gates_[gate].reads) {
          if (state[read] == open)
            throw NetlistError(list_.gates_[gate].line,
                               "\"" + list_.nets_[read].name + "\" depends on itself");
          if (state[read] == unseen) path.push_back(read);
        }
      }
    }
  }

  std::string legal(const std::string& name) {
    std::string text = name;
    for (char& c : text)
      if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_' && c != '@' && c != '.') c = '_';
    if (text.empty() || std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; }))
      text = "n" + text;
    const std::string wanted = text;
    for (int number = 1; !taken_.insert(text).second; ++number)
      text = wanted + "_" + std::to_string(number);
    return text;
  }

  Signal* declare(const std::string& name) {
    const std::string own = legal(name);
    return make_kept<Signal>(own, own, module_, wood_);
  }
  Signal* local(const std::string& name) {
    Signal* const signal = declare(name);
    locals_.push_back(signal);
    return signal;
  }

  void take_latches() {
    std::unordered_set<int> taken;
    for (const Netlist::Latch& latch : list_.latches_) taken.insert(latch.now);
    for (const Netlist::Latch& latch : list_.latches_) {
      const std::string& name = list_.nets_[latch.now].name;
      Signal* now = signals_[latch.now];
      if (list_.nets_[latch.now].output) {
        now = local(name + ".q");
        copies_.emplace_back(signals_[latch.now], now);
      }
      const Netlist::Net& next_net = list_.nets_[latch.next];
      Signal* next = signals_[latch.next];
      if (next_net.output || next_net.driver != Netlist::Driver::gate ||
          !taken.insert(latch.next).second) {
        next = local(name + ".d");
        copies_.emplace_back(next, signals_[latch.next]);
      }
      for (Signal* signal : {now, next}) {
        signal->setRegister();
        signal->setWire();
      }
      registers_.push_back(make_kept<regclass>(now, next, latch.initial ? 1 : 0));
    }
  }

  void take_wires() {
    const auto wire = [&](const char* name) {
      Signal* signal = make_kept<Signal>(legal(name + module_->getName()), module_, wood_, true);
      signal->setRegister(false);
      signal->setWire();
      return signal;
    };
    module_->setSet(wire("SET"));
    module_->setReset(wire("RESET"));
    module_->setRtl(wire("RTL"));
  }

  void learn(long index, const bdd& f) {
    bddpp_manager& m = *wood_->my_bdd_manager();
    new Bddexpression(m.Name_var_by_index(index), wood_, m.Bdd_var_by_index(index), f, 0,
                      0);  // owned by the wood
  }
  bdd status(const Signal* signal) {
    return wood_->my_bdd_manager()->Bdd_var_by_index(status_index(signal));
  }
  long status_index(const Signal* signal) const {
    return signal->isOutput() ? signal->getInitialBddStatusId(module_, wood_)
                              : signal->getBddStatusId(module_, wood_);
  }
  long value_index(const Signal* signal) const {
    return signal->isOutput() ? signal->getInitialBddValueId(module_, wood_)
                              : signal->getBddValueId(module_, wood_);
  }

  bdd function(const Netlist::Gate& gate) {
    bddpp_manager& m = *wood_->my_bdd_manager();
    bdd f = m.Bdd_zero();
    for (int read : gate.parity ? gate.reads : std::vector<int>())
      f = m.Bdd_xor(f, status(signals_[read]));
    for (const std::string& row : gate.rows) {
      bdd product = m.Bdd_one();
      for (size_t i = 0; i < row.size(); ++i) {
        if (row[i] == '-') continue;
        const bdd literal = status(signals_[gate.reads[i]]);
        product = m.Bdd_and(product, row[i] == '1' ? literal : m.Bdd_not(literal));
      }
      f = m.Bdd_or(f, product);
    }
    return gate.on ? f : m.Bdd_not(f);
  }

  void take_equations(const signal_list& inputs, const signal_list& outputs) {
    bddpp_manager& m = *wood_->my_bdd_manager();
    for (size_t net = 0; net < list_.nets_.size(); ++net)
      if (list_.nets_[net].gate >= 0)
        learn(status_index(signals_[net]), function(list_.gates_[list_.nets_[net].gate]));
    auto output = outputs.begin();
    for (int net : list_.outputs_) {
      if (*output != signals_[net]) learn(status_index(*output), status(signals_[net]));
      ++output;
    }
    for (const auto& [to, from] : copies_) learn(status_index(to), status(from));
    for (const signal_list* all : {&inputs, &outputs, &std::as_const(locals_)})
      for (const Signal* signal : *all) learn(value_index(signal), m.Bdd_not(status(signal)));
  }

  const Netlist& list_;
  Module* module_ = nullptr;
  Bddexpressionwood* wood_ = nullptr;
  std::unordered_set<std::string> taken_;
  std::vector<Signal*> signals_;  ///< by net
  signal_list locals_;
  RegisterList registers_;
  std::vector<std::pair<Signal*, Signal*>> copies_;  ///< to, from
};

Module* Netlist::module() const {
  return NetlistModule(*this).make();
}

}  // namespace kiva

#include "tests/zu_compile/compiled.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <utility>

#include "bdd/expression_parser.h"
#include "tarn/model/compilation.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session.h"
#include "tarn/zu/whole_values.h"
#include "tests/support/process_end.h"
#include "tests/support/temp_dir.h"

namespace kiva::test {

void restart_reader() {
  Session::current().counters = Counters();
  Compilation::ModTable() = make_kept<ModuleTable>(&std::cout);
  Compilation::ZucModTable() = make_kept<ModuleTable>(&std::cout);
  Compilation::GDataTypeTable() = nullptr;
  Compilation::GDataMethodTable() = nullptr;
  Compilation::GDataConstantTable() = nullptr;
}

Compiled::Compiled(const std::string& text, const Rules& rules) : rules_(rules) {
  static const TempDir dir;
  const std::string file = dir.write("main.zu", text);
  restart_reader();
  run([&] {
    Compilation::zu_parse(file.c_str());
    module_ = Compilation::ModTable()->get("main");
  });
}

Compiled::Compiled(Module* module, const Rules& rules) : rules_(rules) {
  run([&] { module_ = module; });
}

void Compiled::run(const std::function<void()>& make_module) {
  const Rules before = std::exchange(Compilation::rules(), rules_);
  const Outcome outcome = run_captured([&] {
    try {
      make_module();
      module_->compile();
    } catch (const LibraryException& exception) {
      report_ = exception.text();
    }
  });
  Compilation::rules() = before;
  if (outcome.ended) report_ = outcome.err.empty() ? "ended without a word" : outcome.err;
  if (!report_.empty()) return;
  // Nothing may be said on the way, either, but which runs the states of an automaton have.
  std::istringstream lines(outcome.err);
  for (std::string line; std::getline(lines, line);)
    if (!line.starts_with("Run detecte:")) report_ += line + "\n";
}

Compiled::~Compiled() {
  delete module_;
}

bdd Compiled::equation(const std::string& variable) const {
  const long id = wood()->Index_var_by_name(variable);
  if (id < 0) {
    ADD_FAILURE() << "no variable " << variable;
    return wood()->Bdd_zero();
  }
  const Bddexpression* equation = wood()->exp_by_index(id);
  if (equation == nullptr) {
    ADD_FAILURE() << "no equation of " << variable;
    return wood()->Bdd_zero();
  }
  return equation->my_bdd_exp();
}

void expect_equation(const Compiled& compiled, const std::string& variable,
                     const std::string& formula) {
  ASSERT_TRUE(compiled.ok()) << compiled.report();
  class_exp_bdd_parser parser(compiled.wood()->my_bdd_manager());
  ASSERT_EQ(parser.parse(formula), 0) << formula;
  EXPECT_EQ(compiled.equation(variable), parser.bddexpression()) << variable << " = " << formula;
}

Instants::Instants(const Compiled& compiled) : module_(compiled.module()) {
  close_occurrences(compiled.rules());
  Bddexpressionwood* wood = module_->getBddWood();
  const std::list<long> order = wood->earliest_sort();
  order_.assign(order.begin(), order.end());
  literals_.assign(wood->Nb_bdd_vars(), 2);
  for (const regclass* reg : module_->getRegisterList())
    write(reg->actual_var(), reg->is_initialy_true() != 0, reg->is_initialy_true() == 0);
}

void Instants::close_occurrences(const Rules& rules) {
  Bddexpressionwood* wood = module_->getBddWood();
  const Rules before = std::exchange(Compilation::rules(), rules);
  for (const signal_list* list : {&module_->getOutputSignalList(), &module_->getLocalSignalList()})
    for (const Signal* signal : *list) {
      join_values(signal, module_, wood);
      const std::list<long> ids = signal->getAllBddId(module_, wood);
      for (auto id = ids.begin(); id != ids.end(); ++id) {
        const Bddexpression* status = wood->exp_by_index(*id);
        Bddexpression* value = wood->exp_by_index(*++id);
        if (status != nullptr && value != nullptr &&
            wood->Bdd_is_tautology(status->my_bdd_exp(), 0) &&
            wood->Bdd_is_tautology(value->my_bdd_exp(), 0))
          value->setBddExp(wood->Bdd_one(), value->getEarlyDate(), value->getLateDate());
      }
    }
  Compilation::rules() = before;
}

void Instants::write(const Signal* signal, bool status, bool value) {
  Bddexpressionwood* wood = module_->getBddWood();
  literals_[signal->getInitialBddStatusId(module_, wood)] = status ? 1 : 0;
  literals_[signal->getInitialBddValueId(module_, wood)] = value ? 1 : 0;
}

void Instants::step(const Stimulus& stimulus) {
  Bddexpressionwood* wood = module_->getBddWood();
  // A register moves at the start of the next instant, so that this one can still be looked at.
  std::vector<std::pair<const Signal*, std::pair<int, int>>> moved;
  for (const regclass* reg : module_->getRegisterList()) {
    const int status = literals_[reg->next_var()->getInitialBddStatusId(module_, wood)];
    const int value = literals_[reg->next_var()->getInitialBddValueId(module_, wood)];
    if (status != 2) moved.push_back({reg->actual_var(), {status, value}});
  }
  for (const auto& [actual, rails] : moved) write(actual, rails.first == 1, rails.second == 1);
  for (const Signal* input : module_->getInputSignalList()) {
    const bool present = stimulus.present.contains(input->getOriginalName());
    write(input, present, !present);
  }
  write(module_->getSet(), stimulus.set, !stimulus.set);
  write(module_->getReset(), stimulus.reset, !stimulus.reset);
  for (long id : order_) {
    literals_[id] = wood->my_bdd_manager()->Bdd_eval_for_literal(
        wood->exp_by_index(id)->my_bdd_exp(), literals_.data());
    // Unknown: it was read before its own equation ran.
    EXPECT_NE(literals_[id], 2) << wood->Name_var_by_index(id);
  }
}

char Instants::state(const std::string& name) const {
  const Signal* signal = name == "RTL" ? module_->getRtl() : module_->getSignal(name);
  const Bddexpressionwood* known = module_->getBddWood();
  auto* wood = const_cast<Bddexpressionwood*>(known);
  const int status = literals_[signal->getInitialBddStatusId(module_, wood)];
  const int value = literals_[signal->getInitialBddValueId(module_, wood)];
  return status == 1 ? (value == 1 ? 'T' : '1') : (value == 1 ? '0' : '_');
}

std::string trace(const std::string& text, const std::string& signal, const std::string& stimuli,
                  const Rules& rules) {
  const Compiled compiled(text, rules);
  if (!compiled.ok()) return compiled.report();
  Instants instants(compiled);
  std::string states;
  std::istringstream words(stimuli);
  for (std::string word; words >> word;) {
    Stimulus stimulus;
    stimulus.set = states.empty();
    std::istringstream names(word);
    for (std::string name; std::getline(names, name, '+');) {
      if (name == "!set") {
        stimulus.set = true;
      } else if (name == "!reset") {
        stimulus.reset = true;
      } else if (name != ".") {
        stimulus.present.insert(name);
      }
    }
    instants.step(stimulus);
    states += instants.state(signal);
  }
  return states;
}

}  // namespace kiva::test

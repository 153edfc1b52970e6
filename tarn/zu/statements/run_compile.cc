// A run as equations: the called module's own, taken in under the suffix of this instance, and the
// ties between them and the caller's signals. Its inputs follow the caller's signals, the caller's
// signals take its outputs in, and a valued tie carries the binding of the value along.

#include "tarn/model/compilation.h"
#include "tarn/model/function_change.h"
#include "tarn/model/interface.h"
#include "tarn/model/rules.h"
#include "tarn/model/sexception.h"
#include "tarn/session/diagnostic.h"
#include "tarn/session/session.h"
#include "tarn/zu/circuit.h"
#include "tarn/zu/compilation.h"
#include "tarn/zu/module_inclusion.h"
#include "tarn/zu/nested_modules.h"
#include "tarn/zu/statements/run.h"

namespace kiva {

namespace {

/// True when the called module, whose equations stand in its own wood, never writes the output:
/// each equation that it hangs on holds the constant of a silent occurrence.
bool never_emitted(const Signal* output, Module* called) {
  Bddexpressionwood* wood = called->getBddWood();
  const auto constant = [&](const Bddexpression* e, bool of_value) {
    if (e == nullptr || e->getAbstraction() != 0) return false;
    const bdd f = e->my_bdd_exp();
    return wood->Bdd_is_tautology(f, 0) || (of_value && wood->Bdd_is_tautology(f, 1));
  };
  const auto hangs_on_constants = [&](long index, bool of_value) {
    const Bddexpression* e = wood->exp_by_index(index);
    if (e == nullptr || e->getAbstraction() != 0) return false;
    for (long read : e->set_of_var_dependances())
      if (!constant(wood->exp_by_index(read), of_value)) return false;
    // Finalisation has made a silent value one; one that is zero was written, in vain.
    return !e->set_of_var_dependances().empty() ||
           wood->Bdd_is_tautology(e->my_bdd_exp(), of_value ? 1 : 0);
  };
  return hangs_on_constants(output->getInitialBddStatusId(called, wood), false) &&
         hangs_on_constants(output->getInitialBddValueId(called, wood), true);
}

/// Makes a signal that a run has bound a local of the caller.
void place_local(Signal* bound, Module* module) {
  bound->setLocal();
  bound->setInput(false);
  bound->setOutput(false);
  module->addLocalSignal(bound);
}

void require_one_type(const std::string& formal, const Signal* copy, const Signal* actual,
                      Module* module, Bddexpressionwood* wood) {
  if (!copy->isValued(module, wood) || !actual->isValued(module, wood)) return;
  const std::string& called = copy->getCurrentSignalRef(wood, module)->getType();
  const std::string& caller = actual->getCurrentSignalRef(wood, module)->getType();
  if (called != caller)
    throw explained(IllegalOperationException("Run: signals of two types: ",
                                              formal + " : " + called + ", " +
                                                  actual->getInternalName() + " : " + caller),
                    "\"" + actual->getOriginalName() + "\" is of type " + caller + ", and \"" +
                        formal + "\" of the called module of type " + called);
}

}  // namespace

void Run::compile(Module* module, EquationTable* table) {
  located([&] { include(module, table); });
}

void Run::compile_with_preemption(Module* module, EquationTable* table, const bdd& preemption) {
  located([&] {
    const Interface interface = include(module, table);
    Bddexpressionwood* wood = table->getBddexpressionWood();
    if (wood == nullptr || wood->my_bdd_manager() == nullptr) return;
    if (wood->my_bdd_manager()->Bdd_is_zero_tautologic(preemption)) return;
    const bdd kept = wood->Bdd_not(preemption);
    for (const auto& [formal, copy] : interface.getOutputSignalTable()) {
      const SignalRef* ref = copy->getCurrentSignalRef(wood, module);
      for (long index : {ref->getBddStatusId(wood), ref->getBddValueId(wood)})
        if (Bddexpression* equation = wood->exp_by_index(index))
          if (equation->getAbstraction() == 0) and_function(*equation, kept);
    }
  });
}

Interface Run::include(Module* module, EquationTable* table) {
  find_called(module);
  if (CompilingModule::under_way(called_)) const CompilingModule again(called_);  // throws
  // Numbers of instances begin at 1, whatever a module starts from.
  if (called_->getCurrentInstance() < 0) called_->setCurrentInstance(0);
  called_->incrCurrentInstance();
  suffix_ = "@" + called_->getName() + "_i" + std::to_string(called_->getCurrentInstance());
  if (called_->getSet() == nullptr) compile_module(called_);
  // Finalisation has renamed the variables by which signals find their equations; a compiled file
  // gives them back.
  if (called_->getStatement() != nullptr && called_->getFinalised() != 0)
    throw explained(
        IllegalOperationException("Run: called module has been finalised: ", module_name_),
        "module \"" + module_name_ + "\" has been finalised already");
  for (const auto& [formal, actual] : *renaming_)
    if (called_->getInputSignal(formal) == nullptr && called_->getOutputSignal(formal) == nullptr)
      throw explained(RunUnknownSignalException("not a signal of the called module", formal),
                      "\"" + formal + "\" is no input or output of module \"" + module_name_ + '"');

  Interface interface;
  table->settle();
  include_compiled_module(module, called_, &interface, suffix_, table->getBddexpressionWood());
  createEquations(module, table);
  keep_vain_outputs(interface, module, table);
  for (const auto& [formal, copy] : interface.getInputSignalTable())
    connect_input(formal, copy, module, table);
  for (const auto& [formal, copy] : interface.getOutputSignalTable())
    connect_output(formal, copy, module, table);
  return interface;
}

void Run::createEquations(Module* module, EquationTable* table) {
  Circuit c(*this, module, table);
  const auto wire = [&](const Signal* called_wire) {
    return module->getLocalSignal(called_wire->getName(called_, called_->getBddWood()) + suffix_);
  };
  c.assign(wire(called_->getSet()), c.set());
  c.assign(wire(called_->getReset()), c.reset());
  Signal* ends = wire(called_->getRtl());
  // A finalised module has no equation for an end that never comes.
  if (table->getBddExpression(ends->getBddStatusId(module, table->getBddexpressionWood())) ==
      nullptr)
    c.assign(ends, False());
  c.assign(c.rtl(), ends);
  c.tell_that_it_stands();
}

/// A finalised module has constants for an output that it emits only where it never comes to. With
/// those alone the caller's finalisation would take it for one that nothing emits, and make it
/// Zero.
void Run::keep_vain_outputs(const Interface& interface, Module* module, EquationTable* table) {
  if (called_->getFinalised() == 0) return;
  Bddexpressionwood* wood = table->getBddexpressionWood();
  Signal* never = nullptr;
  for (const auto& [formal, copy] : interface.getOutputSignalTable()) {
    Bddexpression* status = wood->exp_by_index(copy->getBddStatusId(module, wood));
    const Bddexpression* value = wood->exp_by_index(copy->getBddValueId(module, wood));
    const auto is_zero = [&](const Bddexpression* e) {
      return e != nullptr && e->getAbstraction() == 0 && wood->Bdd_is_tautology(e->my_bdd_exp(), 0);
    };
    if (!is_zero(status) || !is_zero(value)) continue;
    if (never == nullptr) {
      never = make_kept<Signal>("NEVER" + suffix_, module, wood);
      never->setWire();
      never->setInstance();
      module->addLocalSignal(never);
      table->createEquation(never, False(), module);
    }
    set_function(*status, never->getBddStatus(module, wood));
  }
}

void Run::connect_input(const std::string& formal, Signal* copy, Module* module,
                        EquationTable* table) {
  Signal* actual = getRenamingSignal(formal);
  if (actual != nullptr) {
    if (actual->isOutput())
      throw explained(RunUnknownSignalException("output signal renames an input signal",
                                                actual->getInternalName()),
                      "the output \"" + actual->getOriginalName() + "\" cannot feed the input \"" +
                          formal + "\" of module \"" + module_name_ + "\"; use a local");
  } else {
    actual = module->getInputSignal(formal);
    if (actual == nullptr) actual = module->getLocalSignal(formal);
    if (actual == nullptr)
      throw explained(RunUnknownSignalException("not input expected", formal),
                      "the input \"" + formal + "\" of module \"" + module_name_ +
                          "\" needs an input or local of that name here, or a renaming");
  }
  Bddexpressionwood* wood = table->getBddexpressionWood();
  require_one_type(formal, copy, actual, module, wood);
  const bool valued = actual->isValued(module, wood);
  if (valued) copy->setClock();
  table->createEquation(copy, actual, module, true);
  if (!valued) return;
  const auto bind = [&](DataExpr* value, Expression* fires) {
    Signal* bound = module->addSignalBinding(value, copy, wood);
    place_local(bound, module);
    table->createEquation(bound, fires, module, true);
  };
  const auto bindings = module->getDataBindingByClock(actual);
  if (Compilation::rules().run_join) {
    // Of several bindings, only the signal's own value tells which one has fired.
    bind(make_kept<DataSignalValue>(actual), Cond(True(), copy));
  } else if (bindings == nullptr) {
    bind(make_kept<DataSignalValue>(actual), actual);
  } else {
    for (const DataBinding* binding : *bindings) bind(binding->getValue(), binding->getClock());
  }
}

void Run::connect_output(const std::string& formal, Signal* copy, Module* module,
                         EquationTable* table) {  // house: the cases of one tie
  // The signal of a sustained value is an output that only its binding is about.
  if (copy->isValue() && getRenamingSignal(formal) == nullptr) return;
  Signal* actual = getRenamingSignal(formal);
  if (actual != nullptr) {
    if (actual->isInput())
      throw explained(RunUnknownSignalException("input signal renames an output signal",
                                                actual->getInternalName()),
                      "the input \"" + actual->getOriginalName() + "\" cannot take the output \"" +
                          formal + "\" of module \"" + module_name_ + '"');
  } else {
    actual = module->getOutputSignal(formal);
    if (actual == nullptr) actual = module->getLocalSignal(formal);
    if (actual == nullptr)
      throw explained(RunUnknownSignalException("not ouput expected", formal),
                      "the output \"" + formal + "\" of module \"" + module_name_ +
                          "\" needs an output or local of that name here, or a renaming");
  }
  Bddexpressionwood* wood = table->getBddexpressionWood();
  require_one_type(formal, copy, actual, module, wood);
  const bool joins = Compilation::rules().run_join;
  if (!joins) {
    table->replaceEquation(actual, copy, module);
  } else if (!never_emitted(called_->getOutputSignal(formal), called_)) {
    table->join_rails_later(actual, copy, module, true);
  }
  if (!actual->isValued(module, wood)) return;
  const auto bindings = module->getDataBindingByClock(copy);
  if (bindings == nullptr) {
    std::string told = "***error:run:no signal binding for:" + formal + "  in called module";
    if (getSpan().known()) told += '\n' + getSpan().text() + ": run of " + module_name_;
    Diagnostic fault = Diagnostic::of_told(told, Manner::stream, place_of(getSpan()));
    fault.sentence = "module \"" + module_name_ + "\" gives its output \"" + formal +
                     "\" no value, and \"" + actual->getOriginalName() + "\" needs one";
    end_with(std::move(fault));
  }
  for (const DataBinding* binding : *bindings) {
    Signal* bound = module->addSignalBinding(binding->getValue(), actual, wood);
    module->getBinding(bound->getInternalName())->setPlace(getSpan());
    place_local(bound, module);
    if (!joins) {
      table->createEquation(bound, binding->getClock(), module, true);
      continue;
    }
    // Of several values, the one counts whose own signal is there.
    table->createEquation(bound, Cond(True(), copy), module, true);
    const Signal* trigger = binding->getSignal();
    const Bddexpression* fires = wood->exp_by_index(trigger->getInitialBddStatusId(module, wood));
    if (fires != nullptr && fires->getAbstraction() != 0) continue;
    // An occurrence that finalisation has left without an equation fires no more.
    and_function(*wood->exp_by_index(bound->getBddStatusId(module, wood)),
                 fires == nullptr ? wood->Bdd_zero() : fires->my_bdd_exp());
  }
}

}  // namespace kiva

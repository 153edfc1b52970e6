// A module's tables as they stand in memory, for people.

#include <iostream>

#include "tarn/model/module.h"
#include "tarn/targets/frame/target.h"

namespace kiva {

namespace {

void put_id(std::ostream& out, long index) {
  if (index < 0)
    out << "NODEF";
  else
    out << index;
}

void put_signals(std::ostream& out, Module& module, const char* title, const signal_list& signals) {
  Bddexpressionwood* wood = module.getBddWood();
  out << title;
  for (const Signal* signal : signals) {
    const SignalRef* ref =
        signal->hasOccurrence(wood) ? signal->getSignalRef(&module, wood) : nullptr;
    out << ' ' << signal->getInternalName() << '(';
    put_id(out, ref == nullptr ? -1 : ref->getBddStatusId(wood));
    out << ',';
    put_id(out, ref == nullptr ? -1 : ref->getBddValueId(wood));
    out << ") ";
  }
  out << " ;\n";
}

void put_module(const TargetJob& job) {
  std::ostream& out = job.out;
  Module& module = *job.module;
  if (!job.rules.quiet) std::cerr << "enter debug put \n";
  out << "module " << module.getName() << '\n';
  put_signals(out, module, "input", module.getInputSignalList());
  put_signals(out, module, "output", module.getOutputSignalList());
  put_signals(out, module, "local", module.getLocalSignalList());
  out << "register\n";
  for (const regclass* reg : module.getRegisterList())
    out << reg->actual_var()->getInternalName() << ";\n";
  out << "\nexternal wires ";
  for (const Signal* wire : {module.getSet(), module.getReset(), module.getRtl()})
    if (wire != nullptr) out << wire->getInternalName() << ' ';
  out << ";\n\nequations\n";
  Bddexpressionwood& wood = *module.getBddWood();
  wood.update_bdd_vars();
  for (long index : wood.earliest_sort()) {
    const Bddexpression& e = *wood.Exp_table()[index];
    out << index << ": " << e.my_bddname() << "  dates (" << e.getEarlyDate() << ','
        << e.getLateDate() << ") aval";
    for (long reader : wood.set_of_amont_dependances(index))
      out << ' ' << wood.Name_var_by_index(reader);
    out << '\n';
  }
  out << "end equations\n";
  if (!job.rules.quiet) std::cerr << "end of debug put\n";
}

}  // namespace

extern const Target debug_target{
    .option = "debug",
    .help = "tables in memory, .dbg",
    .file = {.extension = ".dbg", .in_folder = true, .tells_existing = true, .tells_failure = true},
    .put = put_module,
    .shown_as = "Debugging trace"};

// The told operations of other classes.

void Module::DEBUG_put(std::ostream& out) {
  put_target(debug_target, this, out);
}

void Module::printDebug() {
  print_target(debug_target, this);
}

}  // namespace kiva

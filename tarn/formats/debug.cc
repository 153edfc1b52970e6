// A module's tables as they stand in memory, for people.

#include <fstream>
#include <iostream>
#include <sstream>

#include "forms/forms.h"
#include "tarn/formats/target_rules.h"
#include "tarn/formats/targets.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"

namespace kiva {

namespace {

void put_id(std::ostream& out, long id) {
  if (id < 0)
    out << "NODEF";
  else
    out << id;
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

}  // namespace

void Module::DEBUG_put(std::ostream& out) {
  const bool quiet = Compilation::target_rules().quiet_debug;
  if (!quiet) std::cerr << "enter debug put \n";
  out << "module " << name << '\n';
  put_signals(out, *this, "input", input_signal_list);
  put_signals(out, *this, "output", output_signal_list);
  put_signals(out, *this, "local", local_signal_list);
  out << "register\n";
  for (const regclass* reg : register_list) out << reg->actual_var()->getInternalName() << ";\n";
  out << "\nexternal wires ";
  for (const Signal* wire : {set_wire, reset_wire, rtl_wire})
    if (wire != nullptr) out << wire->getInternalName() << ' ';
  out << ";\n\nequations\n";
  Bddexpressionwood& wood = *getBddWood();
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
  if (!quiet) std::cerr << "end of debug put\n";
}

void Module::printDebug() {
  const TargetRules& rules = Compilation::target_rules();
  const PrintFile& file = target("debug").file;
  print_target(*this, file, rules, [this](std::ostream& out) { DEBUG_put(out); });
  const std::string path = print_path(*this, file, rules);
  std::ifstream in(path);
  if (!in) return;  // told already
  std::stringstream text;
  text << "#COLONNE 130 \n" << in.rdbuf();
  OFD_afficheur(text, path, "Debugging trace");
}

}  // namespace kiva

#include "tarn/model/interface.h"

#include <ostream>

#include "tarn/model/module.h"
#include "tarn/model/sexception.h"

namespace kiva {

namespace {

void enter(Interface::Table& table, const std::string& name, Signal* signal,
           const char* operation) {
  if (!table.emplace(name, signal).second) throw IllegalOperationException(operation, name);
}

Signal* look_up(const Interface::Table& table, const std::string& name) {
  auto at = table.find(name);
  return at == table.end() ? nullptr : at->second;
}

}  // namespace

void Interface::addInput(const std::string& name, Signal* signal) {
  enter(input_signal_table, name, signal, "Interface::addInput");
}
void Interface::addOutput(const std::string& name, Signal* signal) {
  enter(output_signal_table, name, signal, "Interface::addOutput");
}
void Interface::addLocal(const std::string& name, Signal* signal) {
  enter(local_signal_table, name, signal, "Interface::addLocal");
}
void Interface::addData(const std::string& name, Signal* signal) {
  enter(data_signal_table, name, signal, "Interface::addData");
}

Signal* Interface::getInputSignal(const std::string& name) const {
  return look_up(input_signal_table, name);
}
Signal* Interface::getOutputSignal(const std::string& name) const {
  return look_up(output_signal_table, name);
}
Signal* Interface::getLocalSignal(const std::string& name) const {
  return look_up(local_signal_table, name);
}
Signal* Interface::getDataSignal(const std::string& name) const {
  return look_up(data_signal_table, name);
}

Signal* Interface::getSignal(const std::string& name) const {
  for (const Table* table :
       {&input_signal_table, &output_signal_table, &local_signal_table, &data_signal_table})
    if (Signal* signal = look_up(*table, name)) return signal;
  return nullptr;
}

void Interface::printInterface(std::ostream& out) const {
  const auto print_table = [&out](const char* title, const Table& table) {
    out << title << '\n';
    for (const auto& [name, signal] : table) out << "  " << name << ' ' << signal << '\n';
  };
  print_table("input:", input_signal_table);
  print_table("output:", output_signal_table);
  print_table("local:", local_signal_table);
  print_table("data:", data_signal_table);
}

}  // namespace kiva

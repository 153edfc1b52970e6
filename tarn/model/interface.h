#pragma once

#include <iosfwd>
#include <list>
#include <map>
#include <string>

namespace kiva {

class Signal;
class regclass;

/// The signals that an including module offers to an included one, by name.
class Interface {
 public:
  using Table = std::map<std::string, Signal*>;

  // A name already there throws IllegalOperationException.
  void addInput(const std::string& name, Signal* signal);
  void addOutput(const std::string& name, Signal* signal);
  void addLocal(const std::string& name, Signal* signal);
  void addData(const std::string& name, Signal* signal);
  void addRegister(regclass* reg) { register_list.push_back(reg); }

  // Null when there is none.
  Signal* getInputSignal(const std::string& name) const;
  Signal* getOutputSignal(const std::string& name) const;
  Signal* getLocalSignal(const std::string& name) const;
  Signal* getDataSignal(const std::string& name) const;
  /// Inputs, outputs, locals, data, in this order.
  Signal* getSignal(const std::string& name) const;

  const Table& getInputSignalTable() const { return input_signal_table; }
  const Table& getOutputSignalTable() const { return output_signal_table; }
  const Table& getLocalSignalTable() const { return local_signal_table; }
  const Table& getDataSignalRable() const { return data_signal_table; }
  const std::list<regclass*>& getRegisterList() const { return register_list; }
  void printInterface(std::ostream& out) const;

 private:
  Table input_signal_table;
  Table output_signal_table;
  Table local_signal_table;
  Table data_signal_table;
  std::list<regclass*> register_list;
};

}  // namespace kiva

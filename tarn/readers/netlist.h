#pragma once

#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace kiva {

class Module;

/// What is wrong with a netlist, and in which line of its file; 0 for none.
struct NetlistError : std::runtime_error {
  NetlistError(int line, const std::string& reason) : std::runtime_error(reason), line(line) {}
  int line;
};

/// A circuit of gates and flip-flops over nets, as the readers of netlists fill it. Nets are
/// numbers from 0, each with a name.
class Netlist {
 public:
  /// What drives a net: a table over others.
  struct Gate {
    int line = 0;
    std::vector<int> reads = {};
    std::vector<std::string> rows = {};  ///< products: "0", "1" or "-" for each net read
    bool on = true;                      ///< the rows tell where the net is 1; else where it is 0
    bool parity = false;                 ///< no rows: 1 where an odd number of nets is
  };
  struct Latch {
    int now, next;
    bool initial;
  };

  std::string name = "circuit";

  /// The net of that name, which is made where there is none; `line` reads or drives it.
  int net(const std::string& name, int line);
  void add_input(const std::string& name, int line);
  void add_output(const std::string& name, int line);
  /// A second driver of a net is a NetlistError, in these two as in an input.
  void add_gate(int net, Gate gate);
  void add_latch(int now, int next, bool initial, int line);

  /// The module: a signal for each net, finalised. NetlistError for a net that nothing drives, and
  /// for gates that wait for each other.
  Module* module() const;

 private:
  friend class NetlistModule;
  enum class Driver { none, input, gate, latch };
  struct Net {
    std::string name;
    int line;
    Driver driver = Driver::none;
    int gate = -1;
    bool output = false;
  };
  void drive(int net, Driver driver, int line);

  std::unordered_map<std::string, int> numbers_;
  std::vector<Net> nets_;
  std::vector<int> inputs_, outputs_;
  std::vector<Gate> gates_;
  std::vector<Latch> latches_;
};

}  // namespace kiva

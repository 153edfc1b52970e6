#pragma once

#include <filesystem>
#include <fstream>

#include "engine/signal_names.h"
#include "engine/trace.h"

namespace kiva {

/// A value change dump (IEEE 1364): instant n at time n, one wire of one bit a signal in the scopes
/// `inputs`, `outputs`, `registers` and `locals` of the module's scope (One 1, Zero 0, Bottom z,
/// Top and unknown x), for a valued input or output a string NAME.value besides. At the first
/// instant everything is written, then what changes.
class VcdTrace : public TraceWriter {
 public:
  explicit VcdTrace(const Simulation& simulation);
  void begin(std::ostream& out) override;
  void write(std::ostream& out, const SimulationState& state) override;

 private:
  struct Wire {
    SignalPlace place;
    std::string id;        ///< the dump's code for the bit
    std::string value_id;  ///< for the text; empty where there is none
    char bit = 0;
    std::string text;
  };
  void declare(std::ostream& out, const char* scope, SignalPlace::List list,
               const std::vector<Signal*>& valued);

  const Simulation& simulation_;
  SignalNames names_;
  std::vector<Wire> wires_;
  size_t codes_ = 0;
  bool first_ = true;
};

/// The same as a compressed dump, as the program `vcd2fst` makes it. What it gives is written at
/// the end; std::runtime_error where the program is not there or fails.
class FstTrace : public TraceWriter {
 public:
  explicit FstTrace(const Simulation& simulation);
  ~FstTrace() override;
  void begin(std::ostream& out) override;
  void write(std::ostream& out, const SimulationState& state) override;
  void end(std::ostream& out) override;

 private:
  VcdTrace dump_;
  std::filesystem::path folder_;  ///< of the uncompressed dump, for as long as this lives
  std::ofstream file_;
};

}  // namespace kiva

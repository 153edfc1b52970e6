#pragma once

#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "engine/simulation.h"

namespace kiva {

/// Writes what each instant shows.
class TraceWriter {
 public:
  virtual ~TraceWriter() = default;
  /// What stands above the first instant.
  virtual void begin(std::ostream&) {}
  virtual void write(std::ostream& out, const SimulationState& state) = 0;
  /// What stands behind the last one.
  virtual void end(std::ostream&) {}
};

/// One JSON object a line: instant, outputs with state word and value, locals, registers; names in
/// list order.
class JsonTrace : public TraceWriter {
 public:
  explicit JsonTrace(const Simulation& simulation);
  void write(std::ostream& out, const SimulationState& state) override;

 private:
  std::vector<std::string> output_keys_, local_keys_, register_keys_;
};

/// For a person: present outputs with their values, the other outputs by state, then the registers
/// and locals that are One, Top or unknown, unless only the outputs are wanted.
class TextTrace : public TraceWriter {
 public:
  explicit TextTrace(const Simulation& simulation, bool outputs_only = false)
      : simulation_(simulation), outputs_only_(outputs_only) {}
  void begin(std::ostream& out) override;
  void write(std::ostream& out, const SimulationState& state) override;

 private:
  const Simulation& simulation_;
  bool outputs_only_;
};

/// A format of traces: a row of the table that the console offers.
struct TraceFormat {
  const char* name;
  const char* tells;  ///< for the help
  std::unique_ptr<TraceWriter> (*make)(const Simulation& simulation);
};
std::span<const TraceFormat> trace_formats();

}  // namespace kiva

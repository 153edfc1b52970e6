#pragma once

#include <cstdint>
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
  /// Whether `write` does anything: a run whose instants nobody looks at is faster.
  virtual bool looks() const { return true; }
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
  /// A list as text. What has not changed since the last instant is not made anew.
  class Rows {
   public:
    explicit Rows(const std::vector<std::string>& names);
    /// `values` by row; null for a list without.
    void append(std::string& line, const std::vector<SignalState>& states,
                const std::vector<std::string>* values);

   private:
    static constexpr size_t block_rows = 8;
    void make(size_t block, const std::vector<SignalState>& states,
              const std::vector<std::string>* values);
    bool changed(size_t block, const std::vector<SignalState>& states,
                 const std::vector<std::string>* values) const;

    std::vector<std::string> keys_;
    std::vector<SignalState> states_;  ///< of the last instant; empty before the first
    std::vector<std::string> values_;
    std::vector<std::string> blocks_;  ///< the text of so many rows each
  };
  Rows outputs_, locals_, registers_;
  std::string line_;
};

/// For a person: present outputs with their values, the other outputs by state, then the registers
/// and locals that are One, Top or unknown, unless only the outputs are wanted.
class TextTrace : public TraceWriter {
 public:
  explicit TextTrace(const Simulation& simulation, bool outputs_only = false);
  void begin(std::ostream& out) override;
  void write(std::ostream& out, const SimulationState& state) override;

 private:
  /// A column of which the rows are told that stand out; made anew where it has changed.
  struct Column {
    const char* title;
    const std::vector<std::string>* names;
    std::vector<SignalState> states;
    std::string text;
    void append(std::string& line, const std::vector<SignalState>& now);
  };
  const Simulation& simulation_;
  bool outputs_only_;
  Column registers_, locals_;
  std::string line_;
};

/// One line at the end: a digest of all that the JSON trace would have told, and the number of
/// instants. Runs of one digest are the same, but for a chance of 2^-64.
class DigestTrace : public TraceWriter {
 public:
  explicit DigestTrace(const Simulation& simulation);
  void write(std::ostream& out, const SimulationState& state) override;
  void end(std::ostream& out) override;

 private:
  void take(const void* bytes, size_t count);
  std::uint64_t digest_;
  long instants_ = 0;
};

/// A format of traces: a row of the table that the console offers.
struct TraceFormat {
  const char* name;
  const char* tells;  ///< for the help
  std::unique_ptr<TraceWriter> (*make)(const Simulation& simulation);
};
std::span<const TraceFormat> trace_formats();

}  // namespace kiva

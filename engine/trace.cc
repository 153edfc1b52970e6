// What an instant shows, as text. Names are escaped once, when a writer is made.

#include "engine/trace.h"

#include <iomanip>
#include <ostream>

#include "base/json_text.h"
#include "base/printable_text.h"
#include "engine/vcd_trace.h"

namespace kiva {

namespace {

std::vector<std::string> keys(const std::vector<std::string>& names) {
  std::vector<std::string> keys;
  for (const std::string& name : names) keys.push_back(JsonText::quoted(name) + ":");
  return keys;
}

void append_states(std::string& line, const std::vector<std::string>& keys,
                   const std::vector<SignalState>& states) {
  for (size_t i = 0; i < keys.size(); ++i) {
    if (i != 0) line += ',';
    line += keys[i];
    line += '"';
    line += look_of(states[i]).word;
    line += '"';
  }
}

}  // namespace

JsonTrace::JsonTrace(const Simulation& simulation)
    : output_keys_(keys(simulation.output_names())),
      local_keys_(keys(simulation.local_names())),
      register_keys_(keys(simulation.register_names())) {}

void JsonTrace::write(std::ostream& out, const SimulationState& state) {
  std::string line = "{\"instant\":" + std::to_string(state.instant) + ",\"outputs\":{";
  for (size_t row = 0; row < output_keys_.size(); ++row) {
    if (row != 0) line += ',';
    line += output_keys_[row];
    line += "[\"";
    line += look_of(state.shown_outputs[row]).word;
    line += "\",";
    line += JsonText::quoted(state.output_values[row]);
    line += ']';
  }
  line += "},\"locals\":{";
  append_states(line, local_keys_, state.shown_locals);
  line += "},\"registers\":{";
  append_states(line, register_keys_, state.shown_registers);
  line += "}}\n";
  out << line << std::flush;
}

namespace {

/// The names in one state, each behind a blank.
std::string names_in(SignalState wanted, const std::vector<std::string>& names,
                     const std::vector<SignalState>& states) {
  std::string text;
  for (size_t i = 0; i < names.size(); ++i)
    if (states[i] == wanted) text += " " + names[i];
  return text;
}

/// A column of rows of which only those that stand out are named.
std::string outstanding(const char* title, const std::vector<std::string>& names,
                        const std::vector<SignalState>& states) {
  std::string text = names_in(SignalState::one, names, states);
  for (SignalState state : {SignalState::top, SignalState::unknown}) {
    const std::string found = names_in(state, names, states);
    if (!found.empty()) text += " " + std::string(look_of(state).word) + ":" + found;
  }
  return text.empty() ? text : " | " + std::string(title) + text;
}

}  // namespace

void TextTrace::begin(std::ostream& out) {
  out << "# instant  outputs present, with their values | other outputs by state";
  if (!outputs_only_) out << " | registers one, top, unknown | locals one, top, unknown";
  out << '\n';
}

void TextTrace::write(std::ostream& out, const SimulationState& state) {
  out << std::setw(6) << state.instant << ' ';
  const std::vector<std::string>& outputs = simulation_.output_names();
  bool any = false;
  for (size_t row = 0; row < outputs.size(); ++row) {
    if (state.shown_outputs[row] != SignalState::one) continue;
    any = true;
    out << ' ' << outputs[row];
    if (state.output_values[row] != "--") out << '=' << printable(state.output_values[row]);
  }
  if (!any) out << " -";
  std::string others;
  for (SignalState kind :
       {SignalState::zero, SignalState::top, SignalState::bottom, SignalState::unknown}) {
    const std::string found = names_in(kind, outputs, state.shown_outputs);
    if (!found.empty()) others += " " + std::string(look_of(kind).word) + ":" + found;
  }
  if (!others.empty()) out << " |" << others;
  if (!outputs_only_)
    out << outstanding("registers:", simulation_.register_names(), state.shown_registers)
        << outstanding("locals:", simulation_.local_names(), state.shown_locals);
  out << '\n' << std::flush;
}

std::span<const TraceFormat> trace_formats() {
  using Writer = std::unique_ptr<TraceWriter>;
  static const TraceFormat formats[] = {
      {"text", "for a person",
       [](const Simulation& s) -> Writer { return std::make_unique<TextTrace>(s); }},
      {"outputs", "text without registers and locals",
       [](const Simulation& s) -> Writer { return std::make_unique<TextTrace>(s, true); }},
      {"json", "an object a line",
       [](const Simulation& s) -> Writer { return std::make_unique<JsonTrace>(s); }},
      {"vcd", "a value change dump, for wave viewers",
       [](const Simulation& s) -> Writer { return std::make_unique<VcdTrace>(s); }},
      {"fst", "the same, compressed by vcd2fst",
       [](const Simulation& s) -> Writer { return std::make_unique<FstTrace>(s); }},
  };
  return formats;
}

}  // namespace kiva

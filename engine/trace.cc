// What an instant shows, as text. Names are escaped once, when a writer is made.

#include "engine/trace.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <ostream>

#include "base/json_text.h"
#include "base/printable_text.h"
#include "engine/vcd_trace.h"

namespace kiva {

namespace {

void append_number(std::string& text, long number) {
  char digits[24];
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, number);
  text.append(digits, end);
}

}  // namespace

JsonTrace::Rows::Rows(const std::vector<std::string>& names)
    : values_(names.size()), blocks_((names.size() + block_rows - 1) / block_rows) {
  for (const std::string& name : names)
    keys_.push_back((keys_.empty() ? "" : ",") + JsonText::quoted(name) + ":");
}

bool JsonTrace::Rows::changed(size_t block, const std::vector<SignalState>& states,
                              const std::vector<std::string>* values) const {
  const size_t first = block * block_rows, last = std::min(first + block_rows, keys_.size());
  if (std::memcmp(&states_[first], &states[first], last - first) != 0) return true;
  for (size_t row = first; values != nullptr && row < last; ++row)
    if (values_[row] != (*values)[row]) return true;
  return false;
}

void JsonTrace::Rows::make(size_t block, const std::vector<SignalState>& states,
                           const std::vector<std::string>* values) {
  const size_t first = block * block_rows, last = std::min(first + block_rows, keys_.size());
  std::string& text = blocks_[block];
  text.clear();
  for (size_t row = first; row < last; ++row) {
    text += keys_[row];
    text += values == nullptr ? "\"" : "[\"";
    text += look_of(states[row]).word;
    text += '"';
    states_[row] = states[row];
    if (values == nullptr) continue;
    values_[row] = (*values)[row];
    text += ',';
    text += JsonText::quoted(values_[row]);
    text += ']';
  }
}

void JsonTrace::Rows::append(std::string& line, const std::vector<SignalState>& states,
                             const std::vector<std::string>* values) {
  const bool first = states_.empty();
  states_.resize(keys_.size());
  for (size_t block = 0; block < blocks_.size(); ++block) {
    if (first || changed(block, states, values)) make(block, states, values);
    line += blocks_[block];
  }
}

JsonTrace::JsonTrace(const Simulation& simulation)
    : outputs_(simulation.output_names()),
      locals_(simulation.local_names()),
      registers_(simulation.register_names()) {}

void JsonTrace::write(std::ostream& out, const SimulationState& state) {
  line_ = "{\"instant\":";
  append_number(line_, state.instant);
  line_ += ",\"outputs\":{";
  outputs_.append(line_, state.shown_outputs, &state.output_values);
  line_ += "},\"locals\":{";
  locals_.append(line_, state.shown_locals, nullptr);
  line_ += "},\"registers\":{";
  registers_.append(line_, state.shown_registers, nullptr);
  line_ += "}}\n";
  out.write(line_.data(), static_cast<std::streamsize>(line_.size()));
}

namespace {

/// The names in each state, each behind a blank.
class NamesByState {
 public:
  void add(SignalState state, const std::string& name) {
    std::string& text = texts_[static_cast<size_t>(state)];
    text += ' ';
    text += name;
  }
  const std::string& in(SignalState state) const { return texts_[static_cast<size_t>(state)]; }
  /// Behind the word of the state, where there are any.
  void append(std::string& line, SignalState state) const {
    if (in(state).empty()) return;
    line += ' ';
    line += look_of(state).word;
    line += ':';
    line += in(state);
  }

 private:
  std::string texts_[5];
};

}  // namespace

void TextTrace::Column::append(std::string& line, const std::vector<SignalState>& now) {
  if (states != now) {
    states = now;
    NamesByState found;
    for (size_t row = 0; row < states.size(); ++row)
      if (states[row] != SignalState::zero && states[row] != SignalState::bottom)
        found.add(states[row], (*names)[row]);
    text = found.in(SignalState::one);
    found.append(text, SignalState::top);
    found.append(text, SignalState::unknown);
    if (!text.empty()) text.insert(0, std::string(" | ") + title);
  }
  line += text;
}

TextTrace::TextTrace(const Simulation& simulation, bool outputs_only)
    : simulation_(simulation),
      outputs_only_(outputs_only),
      registers_{"registers:", &simulation.register_names(), {}, ""},
      locals_{"locals:", &simulation.local_names(), {}, ""} {}

void TextTrace::begin(std::ostream& out) {
  out << "# instant  outputs present, with their values | other outputs by state";
  if (!outputs_only_) out << " | registers one, top, unknown | locals one, top, unknown";
  out << '\n';
}

void TextTrace::write(std::ostream& out, const SimulationState& state) {
  line_.clear();
  append_number(line_, state.instant);
  if (line_.size() < 6) line_.insert(0, 6 - line_.size(), ' ');
  line_ += ' ';
  NamesByState others;
  const std::vector<std::string>& outputs = simulation_.output_names();
  bool any = false;
  for (size_t row = 0; row < outputs.size(); ++row) {
    if (state.shown_outputs[row] != SignalState::one) {
      others.add(state.shown_outputs[row], outputs[row]);
      continue;
    }
    any = true;
    line_ += ' ';
    line_ += outputs[row];
    if (state.output_values[row] != "--") line_ += '=' + printable(state.output_values[row]);
  }
  if (!any) line_ += " -";
  const size_t before = line_.size();
  line_ += " |";
  for (SignalState kind :
       {SignalState::zero, SignalState::top, SignalState::bottom, SignalState::unknown})
    others.append(line_, kind);
  if (line_.size() == before + 2) line_.resize(before);
  if (!outputs_only_) {
    registers_.append(line_, state.shown_registers);
    locals_.append(line_, state.shown_locals);
  }
  line_ += '\n';
  out.write(line_.data(), static_cast<std::streamsize>(line_.size()));
}

namespace {

class NoTrace : public TraceWriter {
 public:
  void write(std::ostream&, const SimulationState&) override {}
  bool looks() const override { return false; }
};

}  // namespace

DigestTrace::DigestTrace(const Simulation& simulation) : digest_(14695981039346656037U) {
  for (const auto* names :
       {&simulation.output_names(), &simulation.local_names(), &simulation.register_names()})
    for (const std::string& name : *names) take(name.c_str(), name.size() + 1);
}

/// FNV-1a over words of eight bytes, low ones first, each stirred into the low half.
void DigestTrace::take(const void* bytes, size_t count) {
  const auto* at = static_cast<const unsigned char*>(bytes);
  for (size_t done = 0; done < count; done += 8) {
    std::uint64_t word = 0;
    for (size_t k = 0; k < std::min<size_t>(8, count - done); ++k)
      word |= std::uint64_t{at[done + k]} << (8 * k);
    digest_ = (digest_ ^ word) * 1099511628211U;
    digest_ ^= digest_ >> 32;
  }
}

void DigestTrace::write(std::ostream&, const SimulationState& state) {
  instants_ = state.instant;
  for (const auto* states : {&state.shown_outputs, &state.shown_locals, &state.shown_registers})
    take(states->data(), states->size());
  for (const std::string& value : state.output_values) take(value.c_str(), value.size() + 1);
}

void DigestTrace::end(std::ostream& out) {
  std::string text(16, '0');
  for (size_t k = 0; k < 16; ++k) text[k] = "0123456789abcdef"[digest_ >> (60 - 4 * k) & 15];
  out << text << ' ' << instants_ << " instants\n";
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
      {"none", "nothing, for checks alone",
       [](const Simulation&) -> Writer { return std::make_unique<NoTrace>(); }},
      {"digest", "a line by which runs are compared",
       [](const Simulation& s) -> Writer { return std::make_unique<DigestTrace>(s); }},
      {"vcd", "a value change dump, for wave viewers",
       [](const Simulation& s) -> Writer { return std::make_unique<VcdTrace>(s); }},
      {"fst", "the same, compressed by vcd2fst",
       [](const Simulation& s) -> Writer { return std::make_unique<FstTrace>(s); }},
  };
  return formats;
}

}  // namespace kiva

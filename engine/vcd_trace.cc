#include "engine/vcd_trace.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <ostream>
#include <stdexcept>

extern char** environ;

namespace kiva {

namespace {

/// The n-th code of printable characters, shortest first.
std::string identifier_code(size_t n) {
  constexpr size_t first = 33, count = 94;
  std::string text;
  for (;; n = n / count - 1) {
    text += static_cast<char>(first + n % count);
    if (n < count) return text;
  }
}

char bit_of(SignalState state) {
  switch (state) {
    case SignalState::one:
      return '1';
    case SignalState::zero:
      return '0';
    case SignalState::bottom:
      return 'z';
    case SignalState::top:
    case SignalState::unknown:
      break;
  }
  return 'x';
}

/// A text as a dump's string: blanks and what does not print as octal numbers.
std::string escaped(const std::string& text) {
  std::string result;
  for (char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte > ' ' && byte < 127 && c != '\\') {
      result += c;
      continue;
    }
    char octal[5];
    std::snprintf(octal, sizeof octal, "\\%03o", byte);
    result += octal;
  }
  return result;
}

}  // namespace

VcdTrace::VcdTrace(const Simulation& simulation) : simulation_(simulation), names_(simulation) {}

void VcdTrace::declare(std::ostream& out, const char* scope, SignalPlace::List list,
                       const std::vector<Signal*>& valued) {
  const std::vector<std::string>& names = names_.names(list);
  out << "$scope module " << scope << " $end\n";
  for (size_t row = 0; row < names.size(); ++row) {
    Wire wire{{list, row}, identifier_code(codes_++), "", 0, ""};
    out << "$var wire 1 " << wire.id << ' ' << escaped(names[row]) << " $end\n";
    if (row < valued.size() && valued[row]->isValued(simulation_.module())) {
      wire.value_id = identifier_code(codes_++);
      out << "$var string 1 " << wire.value_id << ' ' << escaped(names[row]) << ".value $end\n";
    }
    wires_.push_back(std::move(wire));
  }
  out << "$upscope $end\n";
}

void VcdTrace::begin(std::ostream& out) {
  out << "$timescale 1 ns $end\n$scope module " << escaped(simulation_.module()->getName())
      << " $end\n";
  declare(out, "inputs", SignalPlace::input, simulation_.input_rows());
  declare(out, "outputs", SignalPlace::output, simulation_.output_rows());
  declare(out, "registers", SignalPlace::register_, {});
  declare(out, "locals", SignalPlace::local, {});
  out << "$upscope $end\n$enddefinitions $end\n";
}

void VcdTrace::write(std::ostream& out, const SimulationState& state) {
  out << '#' << state.instant << '\n';
  if (first_) out << "$dumpvars\n";
  for (Wire& wire : wires_) {
    const char bit = bit_of(shown_state(state, wire.place));
    if (bit != wire.bit) out << bit << wire.id << '\n';
    wire.bit = bit;
    if (wire.value_id.empty()) continue;
    const std::string& text = shown_value(state, wire.place);
    if (first_ || text != wire.text) out << 's' << escaped(text) << ' ' << wire.value_id << '\n';
    wire.text = text;
  }
  if (first_) out << "$end\n";
  first_ = false;
}

FstTrace::FstTrace(const Simulation& simulation) : dump_(simulation) {
  std::string pattern = (std::filesystem::temp_directory_path() / "kiva_dump_XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr)
    throw std::runtime_error("no folder for a temporary file can be made");
  folder_ = pattern;
  file_.open(folder_ / "dump.vcd");
}

FstTrace::~FstTrace() {
  std::error_code none;
  std::filesystem::remove_all(folder_, none);
}

void FstTrace::begin(std::ostream&) {
  // Else the program writes the day into what it makes.
  file_ << "$date none $end\n";
  dump_.begin(file_);
}

void FstTrace::write(std::ostream&, const SimulationState& state) {
  dump_.write(file_, state);
}

void FstTrace::end(std::ostream& out) {
  file_.close();
  if (!file_) throw std::runtime_error("a temporary file cannot be written");
  const std::string from = folder_ / "dump.vcd", to = folder_ / "dump.fst";
  const char* arguments[] = {"vcd2fst", from.c_str(), to.c_str(), nullptr};
  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  posix_spawn_file_actions_addopen(&quiet, STDOUT_FILENO, "/dev/null", 1 /* O_WRONLY */, 0);
  pid_t child = 0;
  const int failed = posix_spawnp(&child, arguments[0], &quiet, nullptr,
                                  const_cast<char* const*>(arguments), environ);
  posix_spawn_file_actions_destroy(&quiet);
  int status = 0;
  if (failed != 0)
    throw std::runtime_error("the program vcd2fst (of gtkwave) makes this format, and is missing");
  if (waitpid(child, &status, 0) != child || status != 0)
    throw std::runtime_error("vcd2fst failed");
  std::ifstream made(to, std::ios::binary);
  out << made.rdbuf() << std::flush;
}

}  // namespace kiva

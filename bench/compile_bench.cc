// Compiling generated programs of 100, 1,000 and 10,000 statements: the time of each stage and its
// growth from one size to the next. Arguments: the largest size to run (default 10,000), and the
// programs to run (default all).

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>
#include <vector>

#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/rules.h"

namespace {

std::string sequence(int statements) {
  std::string body = "pause";
  for (int i = 1; i < statements; ++i) body += i % 2 != 0 ? " >> emit p" : " >> pause";
  return body;
}

std::string parallel(int statements) {
  std::string body = "{pause >> emit o}";
  for (int i = 3; i < statements; i += 3) body += " || {pause >> emit p}";
  return body;
}

/// Branches of one statement, or of a few of each kind.
std::string branches(int statements, bool only_pauses) {
  static const char* const kinds[] = {"{wait a >> emit o}", "loop {pause >> emit p}",
                                      "present b {emit o >> pause} else pause",
                                      "strong abort {halt} when c", "{pause || {emit o >> pause}}"};
  std::string body = "pause";
  for (int i = 1; i < statements; ++i)
    body += std::string(" || ") + (only_pauses ? "pause" : kinds[i % 5]);
  return body;
}

std::string nested_aborts(int statements) {
  std::string body = "halt";
  // Deeper nesting is refused, so beyond that several stand one after another.
  const int depth = std::min(statements / 2, 200);
  for (int i = 0; i < depth; ++i)
    body = "weak abort {" + body + " >> pause} when " + std::string(1, "abc"[i % 3]);
  std::string all = body;
  for (int done = 2 * depth; done < statements; done += 2 * depth) all += " >> " + body;
  return all;
}

std::string mix(std::mt19937& random, int statements) {
  const auto below = [&random](int n) {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  };
  if (statements <= 1) {
    static const char* const leaves[] = {"pause", "emit o", "emit p", "wait a", "pause"};
    return leaves[below(5)];
  }
  const int left = 1 + below(statements - 1);
  const std::string input(1, "abc"[below(3)]);
  switch (below(8)) {
    case 0:
    case 1:
    case 2:
    case 3:
      return "{" + mix(random, left) + " >> " + mix(random, statements - left) + "}";
    case 4:
    case 5:
      return "{" + mix(random, left) + " || " + mix(random, statements - left) + "}";
    case 6:
      return "strong abort {" + mix(random, statements - 1) + "} when " + input;
    default:
      return "present " + input + " {" + mix(random, statements - 1) + "} else pause";
  }
}

/// As many states as there are statements, each looking at a few of 16 inputs.
std::string automaton(std::mt19937& random, int states) {
  const auto below = [&random](int n) {
    return std::to_string(random() % static_cast<unsigned>(n));
  };
  std::string names = "automaton\n", arcs = "transition: initial-> S0;\n";
  for (int s = 0; s < states; ++s) {
    const std::string state = "S" + std::to_string(s);
    names += "state: " + state + (s % 2 != 0 ? " / o;\n" : " / p;\n");
    for (int rank = 1; rank <= 3; ++rank)
      arcs += state + " " + std::to_string(rank) + " [i" + below(16) + " and not i" + below(16) +
              "] / o -> S" + below(states) + ";\n";
  }
  return names + arcs;
}

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

struct Stages {
  double read, compile, finalize, write;
};

constexpr const char* more_inputs =
    ", i0, i1, i2, i3, i4, i5, i6, i7, i8, i9, i10, i11, i12, i13, i14, i15";

Stages measure(const std::string& name, const std::string& body) {
  using namespace kiva;
  const auto file = std::filesystem::temp_directory_path() /
                    ("kiva_compile_bench_" + std::to_string(getpid()) + ".zu");
  std::ofstream(file) << "module " << name << ": Input: a, b, c"
                      << (body.starts_with("automaton") ? more_inputs : "") << "; Output: o, p;\n"
                      << body << "\nend\n";
  Stages stages{};
  double start = now();
  const auto lap = [&start] {
    const double end = now();
    return end - std::exchange(start, end);
  };
  Compilation::zu_parse(file.c_str());
  stages.read = lap();
  Module* module = Compilation::ModTable()->get(name);
  module->compile();
  stages.compile = lap();
  module->finalize(0);
  stages.finalize = lap();
  std::ostringstream text;
  module->ZUC_put(text, 2, 1, 0);
  stages.write = lap();
  std::filesystem::remove(file);
  delete module;
  return stages;
}

}  // namespace

int main(int argc, char** argv) {
  const int largest = argc > 1 ? std::atoi(argv[1]) : 10000;
  kiva::Compilation::rules() = kiva::Rules::sound();
  std::cerr.rdbuf(nullptr);  // what finalisation tells of registers is no result here
  std::printf("%-9s %10s %9s %9s %9s %9s %9s %7s\n", "program", "statements", "read s", "compile s",
              "finalise", "write s", "all s", "growth");
  std::vector<std::string> kinds(argv + std::min(argc, 2), argv + argc);
  if (kinds.empty())
    kinds = {"sequence", "parallel", "aborts", "pauses", "branches", "mix", "automaton"};
  for (const std::string& shape : kinds) {
    double before = 0;
    for (int statements = 100; statements <= largest; statements *= 10) {
      std::mt19937 random(7);
      const std::string body = shape == "sequence"    ? sequence(statements)
                               : shape == "parallel"  ? parallel(statements)
                               : shape == "aborts"    ? nested_aborts(statements)
                               : shape == "pauses"    ? branches(statements, true)
                               : shape == "branches"  ? branches(statements, false)
                               : shape == "automaton" ? automaton(random, statements / 5)
                                                      : mix(random, statements);
      const Stages s = measure(shape + std::to_string(statements), body);
      const double all = s.read + s.compile + s.finalize + s.write;
      std::printf("%-9s %10d %9.4f %9.4f %9.4f %9.4f %9.4f", shape.c_str(), statements, s.read,
                  s.compile, s.finalize, s.write, all);
      if (before > 0) std::printf(" %6.1fx", all / before);
      std::printf("\n");
      std::fflush(stdout);
      before = all;
    }
  }
}

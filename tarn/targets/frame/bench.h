#pragma once

#include <iosfwd>
#include <string>
#include <unordered_map>
#include <vector>

#include "tarn/targets/frame/target_text.h"

namespace kiva {

struct Target;

/// What an instant of a bench gives to a text and awaits of it: bits by index of a variable of the
/// module's manager, values by that of their signal's status.
struct BenchInstant {
  std::unordered_map<long, bool> given;    ///< of inputs and wires; a missing one is 0
  std::unordered_map<long, bool> awaited;  ///< of outputs; a missing one is not looked at
  std::unordered_map<long, std::string> given_values, awaited_values;
};
using BenchInstants = std::vector<BenchInstant>;

/// What the writer of a bench is handed.
struct BenchJob {
  const TargetText& text;  ///< names the module as the target's own text does
  const BenchInstants& instants;
  std::string file, beside;  ///< names of the target's files
  std::string name;          ///< of the bench's file, without extension
  std::string run = {};      ///< commands for a shell, in the bench's folder

  /// A character for each input rail: 0 or 1.
  std::string given(const BenchInstant& instant) const;
  /// A character for each output rail: 0, 1, or `any` where nothing is awaited.
  std::string awaited(const BenchInstant& instant, char any) const;
};

/// The bench of a target language: a program or circuit that gives a text its stimuli, prints
/// "instant N: expected ..." for each output that is another than awaited, then how many instants
/// agree, and fails where one does not.
struct Bench {
  const TargetText::Language* language;
  std::string extension;
  /// Shell commands that prove the target's text in its own tools.
  std::string (*run)(const BenchJob& job);
  void (*put)(const BenchJob& job, std::ostream& out);
  /// A shell command that names the tool and its version in its first line.
  const char* tool;
};

/// Where a bench stands, and how it is run there.
struct BenchFile {
  std::string path;
  std::string run;
};

/// Writes the bench beside the target's files, MODULE_bench with its extension. A failure is told
/// as one of the target's own files.
BenchFile print_bench(const Target& target, Module* module, const BenchInstants& instants);

/// The lines, each behind `start`, with `end` behind the last one: a comment.
std::string bench_comment(const BenchJob& job, const std::string& start, const std::string& end);

}  // namespace kiva

#pragma once

// Options that several programs have.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "proof/property.h"

namespace kiva::programs {

/// Options that take an expression each, kept in the order of the command line.
class PropertyOptions {
 public:
  void add(CLI::App& app, const char* name, proof::Property::Kind kind, const char* help);
  /// What was given, once the command line has been read.
  std::vector<proof::Property> read(const CLI::App& app) const;

 private:
  std::map<const CLI::Option*, proof::Property::Kind> kinds_;
};

/// How inputs are drawn.
struct RandomOptions {
  std::uint64_t seed = 1;
  std::vector<std::string> biases;  ///< NAME=PROBABILITY
};
/// --seed and --bias, which `needs` may ask for (null).
void add_random_options(CLI::App& app, CLI::Option* needs, const char* group,
                        RandomOptions& options);

struct Bias {
  std::string name;
  double probability;
};
/// `problem` says what is wrong with the text; empty for none. Whether an input bears the name is
/// the caller's to say, by `no_input`.
Bias read_bias(const std::string& text, std::string& problem);
std::string no_input(const std::string& option, const std::string& text);

}  // namespace kiva::programs

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "programs/run_options.h"

namespace kiva::console {

struct Options {
  std::string module;
  std::string stimuli = "-";
  std::string format = "text";
  std::string output;
  std::string log;                             ///< file of the reader's trace; empty for none
  std::pair<std::string, std::string> server;  ///< host and port; empty for none
  double time_out = 5;                         ///< of the server, in seconds

  bool debugger = false;  ///< serve one

  // In place of stimuli.
  long random = 0;  ///< instants to draw; 0 for none
  programs::RandomOptions drawn;
  std::vector<std::string> values;  ///< NAME=TEXT,TEXT,...
  std::string save_stimuli;

  // What is looked at.
  std::string until;
  std::string why;  ///< NAME@INSTANT
  bool verbose = false;
  bool update = false;
  std::string expect;
  bool coverage = false;
  std::string coverage_file;
};

/// Reads the command line; -1 to go on, else the status with which the program ends.
int read_options(int argc, char** argv, Options& options);

}  // namespace kiva::console

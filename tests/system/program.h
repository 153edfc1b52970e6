#pragma once

#include <filesystem>
#include <string>

namespace kiva::test {

/// How a program ended and what it wrote.
struct ProgramRun {
  int status = -1;
  std::string out;
  std::string err;
};

/// Runs one of our programs with a shell's argument text, `input` on its standard input.
ProgramRun run_program(const std::string& program, const std::string& arguments,
                       const std::string& input = "");

/// A folder of the source tree.
std::filesystem::path source_folder(const std::string& name);

}  // namespace kiva::test

#include "tests/system/program.h"

#include <sys/wait.h>

#include <cstdlib>

#include "tests/support/temp_dir.h"

namespace kiva::test {

ProgramRun run_program(const std::string& program, const std::string& arguments,
                       const std::string& input) {
  const TempDir dir;
  const std::string in = dir.write("in", input);
  const std::string command = "'" KIVA_PROGRAMS "/" + program + "' " + arguments + " <'" + in +
                              "' >'" + dir.file("out") + "' 2>'" + dir.file("err") + "'";
  const int result = std::system(command.c_str());
  ProgramRun run;
  run.status = WIFEXITED(result) ? WEXITSTATUS(result) : -1;
  run.out = read_text(dir.file("out"));
  run.err = read_text(dir.file("err"));
  return run;
}

std::filesystem::path source_folder(const std::string& name) {
  return std::filesystem::path(KIVA_SOURCE) / name;
}

}  // namespace kiva::test

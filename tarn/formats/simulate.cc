// A simulation at the level of gates, by a tool outside: the module goes there as a netlist.

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

#include "forms/forms.h"
#include "tarn/model/compilation.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"

namespace kiva {

void Module::simulate() {
  if (compilation == nullptr) throw IllegalOperationException("Simulation requires compilation");
  const std::string path = SimulationDir() + name + ".blif";
  if (std::ifstream(path)) std::cerr << "File: " << path << " already exists. File rewrited.\n";
  if (getFinalised() == 0) finalize(0);
  std::ofstream out(path);
  if (!out) {
    fl_show_Smessages("Cannot open output file: " + path);
    return;
  }
  BLIF_put(out, Compilation::KeepWiresFlag() ? 0 : 1);
  out.close();
  if (!out) {
    fl_show_Smessages("Cannot write output file: " + path);
    return;
  }
  const std::string command = "gate_runner " + SimulationDir() + name;
  const int status = std::system(command.c_str());
  constexpr int not_found = 127;  // the shell's answer
  if (status == -1 || (WIFEXITED(status) && WEXITSTATUS(status) == not_found))
    fl_show_Smessages("Cannot run: " + command);
}

}  // namespace kiva

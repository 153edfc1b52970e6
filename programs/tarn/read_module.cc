#include "programs/tarn/read_module.h"

#include "programs/tarn/messages.h"
#include "tarn/model/compilation.h"
#include "tarn/readers/readers.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::tarn_program {

Module* read_module(const std::string& file) {
  if (is_netlist(file)) try {
      return read_netlist(file);
    } catch (const NetlistError& error) {
      fail({file, error.line, 0, error.line, 0}, error.what());
      return nullptr;
    }
  const ZucRead read = read_zuc_file(file, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) fail(read.where, read.reason);
  return read.module;
}

}  // namespace kiva::tarn_program

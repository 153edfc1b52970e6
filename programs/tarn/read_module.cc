#include "programs/tarn/read_module.h"

#include "programs/tarn/messages.h"
#include "tarn/model/compilation.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::tarn_program {

Module* read_module(const std::string& file) {
  const ZucRead read = read_zuc_file(file, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) fail(read.where, read.reason);
  return read.module;
}

}  // namespace kiva::tarn_program

#include "programs/tarn/read_module.h"

#include <iostream>

#include "programs/tarn/messages.h"
#include "tarn/model/compilation.h"
#include "tarn/session/session.h"
#include "tarn/zu/parse_supl.h"
#include "tarn/zuc/zuc_reader.h"

namespace kiva::tarn_program {

void forget_other_files() {
  Compilation::ModTable() = make_kept<ModuleTable>(&std::cout);
  Compilation::ZucModTable() = make_kept<ModuleTable>(&std::cout);
  Compilation::GDataTypeTable() = nullptr;
  Compilation::GDataMethodTable() = nullptr;
  Compilation::GDataConstantTable() = nullptr;
  TheModule() = nullptr;
}

Module* read_module(const std::string& file) {
  const ZucRead read = read_zuc_file(file, Compilation::EmptyString, Compilation::EmptyString);
  if (read.module == nullptr) fail(read.problem);
  return read.module;
}

}  // namespace kiva::tarn_program

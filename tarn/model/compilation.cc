#include "tarn/model/compilation.h"

#include <iostream>

#include "tarn/model/arena.h"
#include "tarn/model/data.h"
#include "tarn/model/module.h"

namespace kiva {

bool Compilation::DebugFlag = false;
bool Compilation::PureSimulFlag = false;
bool Compilation::ValuedSimulFlag = false;
bool Compilation::KivaFlag = false;
bool Compilation::MainFlag = false;
bool Compilation::SaveFlag = false;
bool Compilation::HelpFlag = false;
bool Compilation::VersionFlag = false;
bool Compilation::KeepWiresFlag = false;
bool Compilation::ForgetLocalsNameFlag = false;
bool Compilation::CheckOverKnowledgeFlag = false;
bool Compilation::SMVFlag = false;
bool Compilation::CFlag = false;
bool Compilation::CSHARPFlag = false;
bool Compilation::BLIFFlag = false;
bool Compilation::VHDLALTERAFlag = false;
int Compilation::GDataConstIndex = -1;
std::string Compilation::EmptyString;
ModuleTable* Compilation::ModTable = make_kept<ModuleTable>(&std::cout);
ModuleTable* Compilation::ZucModTable = make_kept<ModuleTable>(&std::cout);
DataTypeTable* Compilation::GDataTypeTable = nullptr;
DataMethodTable* Compilation::GDataMethodTable = nullptr;
DataConstantTable* Compilation::GDataConstantTable = nullptr;

namespace {
template <class Table>
Table& made_on_need(Table*& table) {
  if (table == nullptr) table = make_kept<Table>();
  return *table;
}
}  // namespace

DataTypeTable& Compilation::typeTable() {
  return made_on_need(GDataTypeTable);
}
DataMethodTable& Compilation::methodTable() {
  return made_on_need(GDataMethodTable);
}
DataConstantTable& Compilation::constantTable() {
  return made_on_need(GDataConstantTable);
}

}  // namespace kiva

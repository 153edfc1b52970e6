#include "tarn/model/compilation.h"

#include "tarn/model/data.h"
#include "tarn/model/module.h"
#include "tarn/session/session.h"

namespace kiva {

const std::string Compilation::EmptyString;

namespace {

/// What the current session knows by name.
struct Tables {
  ModuleTable* sources = make_kept<ModuleTable>(&Session::current().told_text());
  ModuleTable* compiled = make_kept<ModuleTable>(&Session::current().told_text());
  DataTypeTable* types = nullptr;
  DataMethodTable* methods = nullptr;
  DataConstantTable* constants = nullptr;
};

Tables& tables() {
  return Session::current().part<Tables>();
}

template <class Table>
Table& made_on_need(Table*& table) {
  if (table == nullptr) table = make_kept<Table>();
  return *table;
}

}  // namespace

ModuleTable*& Compilation::ModTable() {
  return tables().sources;
}
ModuleTable*& Compilation::ZucModTable() {
  return tables().compiled;
}
DataTypeTable*& Compilation::GDataTypeTable() {
  return tables().types;
}
DataMethodTable*& Compilation::GDataMethodTable() {
  return tables().methods;
}
DataConstantTable*& Compilation::GDataConstantTable() {
  return tables().constants;
}
DataTypeTable& Compilation::typeTable() {
  return made_on_need(GDataTypeTable());
}
DataMethodTable& Compilation::methodTable() {
  return made_on_need(GDataMethodTable());
}
DataConstantTable& Compilation::constantTable() {
  return made_on_need(GDataConstantTable());
}

}  // namespace kiva

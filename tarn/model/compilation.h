#pragma once

#include <list>
#include <string>

#include "base/sock.h"

namespace kiva {

class DataConstantTable;
class DataMethodTable;
class DataTypeTable;
class Module;
class ModuleTable;
class class_zu_parser;
struct Rules;
struct TargetRules;

/// What all compilations and reads of one process share.
class Compilation {
 public:
  // User types of equations: odd is a status, even a value.
  static constexpr int STAT = 1;
  static constexpr int VAL = 2;
  static constexpr int SINPUT = 3;
  static constexpr int VINPUT = 4;
  static constexpr int SOUTPUT = 5;
  static constexpr int VOUTPUT = 6;
  static constexpr int SREG = 7;
  static constexpr int VREG = 8;
  static constexpr int SWIRE = 9;
  static constexpr int VWIRE = 10;
  static constexpr int SCLOCK = 11;
  static constexpr int VCLOCK = 12;

  static bool isStatusType(int type) { return type % 2 != 0; }
  static bool isValueType(int type) { return type % 2 == 0; }

  /// The name without its first three characters; std::out_of_range for a shorter one.
  static std::string bddNameToSignalName(const std::string& name) { return name.substr(3); }

  // Requests of a front end, all false; the library reads those that say so.
  /// Comments go into ZUC text.
  static bool DebugFlag;
  static bool PureSimulFlag, ValuedSimulFlag;
  static bool KivaFlag, MainFlag, SaveFlag, HelpFlag, VersionFlag;
  /// Cleaning a module keeps its wires.
  static bool KeepWiresFlag;
  /// Saving writes numbers for the names of locals.
  static bool ForgetLocalsNameFlag;
  static bool CheckOverKnowledgeFlag;
  static bool SMVFlag, CFlag, CSHARPFlag, BLIFFlag, VHDLALTERAFlag;

  /// How target texts are written: as told unless the caller chooses otherwise.
  static TargetRules target_rules;

  /// Last index given to a data constant; -1 before the first.
  static int GDataConstIndex;
  static std::string EmptyString;
  /// Modules compiled from source text, and modules read from ZUC text; both report on the
  /// standard output.
  static ModuleTable* ModTable;
  static ModuleTable* ZucModTable;
  /// Null until the first entry.
  static DataTypeTable* GDataTypeTable;
  static DataMethodTable* GDataMethodTable;
  static DataConstantTable* GDataConstantTable;
  /// The tables, made on first need.
  static DataTypeTable& typeTable();
  static DataMethodTable& methodTable();
  static DataConstantTable& constantTable();

  // Reading source text (tarn/zu).
  /// How statements write their equations: classic unless the caller chooses otherwise.
  static Rules rules;
  /// The reader of source text, and the pointer through which the generated parser and scanner
  /// reach it.
  static class_zu_parser pzu_parser;
  static class_zu_parser* const ple_parser;
  /// Reads the modules of a source file into ModTable. A file that cannot be opened, a syntax error
  /// and some faults end the process with a message; others come out as exceptions of the library,
  /// which know where in the file they arose. The tables keep what had been read before.
  static void zu_parse(const char* file);

  // Reading ZUC text (tarn/zuc).
  /// Reads a module; null, with a message on the error stream, when that fails. `instance` is
  /// appended to signal names; the awaited lists, where not null or empty, restrict the names of
  /// inputs and outputs. The parser's trace goes to the file's name with ".log" behind it.
  static Module* zuc_parse(const std::string& file, const std::string& instance,
                           const std::string& run_instance, const std::list<std::string>* inputs,
                           const std::list<std::string>* outputs);
  static Module* zuc_parse(const std::string& file, const std::string& instance,
                           const std::list<std::string>* inputs,
                           const std::list<std::string>* outputs);
  /// The first file of Module::CompilationFileList whose first line (256 characters at most) holds
  /// the module's name; "" when there is none.
  static std::string getZucFileName(const std::string& module);
  /// The `reincarnate` flag of that file; -1 when there is none.
  static int getReincarnateFromZucFile(const std::string& module);
  /// The same of a file that stands in no list.
  static int getReincarnateFromZucFile(const std::string& module, const std::string& file);
  static Module* createModuleFromZucCode(const std::string& module,
                                         const std::list<std::string>* inputs,
                                         const std::list<std::string>* outputs);

  /// One exchange with the evaluation server: the reply, or "" on any failure.
  static std::string Socket_call(const std::string& message, Sock socket);
};

}  // namespace kiva

#pragma once

#include <list>
#include <string>

#include "base/sock.h"
#include "tarn/session/session.h"

namespace kiva {

class DataConstantTable;
class DataMethodTable;
class DataTypeTable;
class Module;
class ModuleTable;
class class_zu_parser;
struct Rules;
struct TargetRules;

/// What all compilations and reads of one session share: constants, and ways to the current
/// session.
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

  // What the current session holds.
  // Requests of a front end: see SessionOptions.
  static bool& DebugFlag() { return options().DebugFlag; }
  static bool& PureSimulFlag() { return options().PureSimulFlag; }
  static bool& ValuedSimulFlag() { return options().ValuedSimulFlag; }
  static bool& KivaFlag() { return options().KivaFlag; }
  static bool& MainFlag() { return options().MainFlag; }
  static bool& SaveFlag() { return options().SaveFlag; }
  static bool& HelpFlag() { return options().HelpFlag; }
  static bool& VersionFlag() { return options().VersionFlag; }
  static bool& KeepWiresFlag() { return options().KeepWiresFlag; }
  static bool& MapFlag() { return options().MapFlag; }
  static bool& ForgetLocalsNameFlag() { return options().ForgetLocalsNameFlag; }
  static bool& StripFlag() { return options().StripFlag; }
  static bool& CheckOverKnowledgeFlag() { return options().CheckOverKnowledgeFlag; }
  static bool& SMVFlag() { return options().SMVFlag; }
  static bool& CFlag() { return options().CFlag; }
  static bool& CSHARPFlag() { return options().CSHARPFlag; }
  static bool& BLIFFlag() { return options().BLIFFlag; }
  static bool& VHDLALTERAFlag() { return options().VHDLALTERAFlag; }
  /// How target texts are written: as told unless the caller chooses otherwise.
  static TargetRules& target_rules();

  /// Last index given to a data constant; -1 before the first.
  static int& GDataConstIndex() { return Session::current().counters.GDataConstIndex; }
  static const std::string EmptyString;
  /// Modules compiled from source text, and modules read from ZUC text; both report where the
  /// session tells its texts. Null only where the caller sets so.
  static ModuleTable*& ModTable();
  static ModuleTable*& ZucModTable();
  /// Null until the first entry.
  static DataTypeTable*& GDataTypeTable();
  static DataMethodTable*& GDataMethodTable();
  static DataConstantTable*& GDataConstantTable();
  /// The tables, made on first need.
  static DataTypeTable& typeTable();
  static DataMethodTable& methodTable();
  static DataConstantTable& constantTable();

  // Reading source text (tarn/zu).
  /// How statements write their equations: classic unless the caller chooses otherwise.
  static Rules& rules();
  /// The reader of source text, and a pointer to it.
  static class_zu_parser& pzu_parser();
  static class_zu_parser* ple_parser() { return &pzu_parser(); }
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
  /// The first file of Module::CompilationFileList() whose first line (256 characters at most)
  /// holds the module's name; "" when there is none.
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

 private:
  static SessionOptions& options() { return Session::current().options; }
};

}  // namespace kiva

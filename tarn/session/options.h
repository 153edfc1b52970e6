#pragma once

#include <list>
#include <string>

namespace kiva {

/// Value of the environment variable, or "./" when it is not set.
std::string my_getenv(const std::string& name);

/// What a front end asks of a session; the library reads those that say so.
struct SessionOptions {
  bool DebugFlag = false;  ///< comments go into ZUC text
  bool PureSimulFlag = false, ValuedSimulFlag = false;
  bool KivaFlag = false, MainFlag = false, SaveFlag = false, HelpFlag = false, VersionFlag = false;
  bool KeepWiresFlag = false;  ///< cleaning a module keeps its wires
  /// Circuits get what a map of the source tells by, and finalisation keeps it.
  bool MapFlag = false;
  bool ForgetLocalsNameFlag = false;  ///< saving writes numbers for the names of locals
  bool StripFlag = false;  ///< finalisation takes no heed of the locals that the user declared
  bool CheckOverKnowledgeFlag = false;
  bool SMVFlag = false, CFlag = false, CSHARPFlag = false, BLIFFlag = false;
  bool VHDLALTERAFlag = false;
  /// A reader of source text goes on behind a fault, and hands all to the session's sink; else it
  /// ends at the first fault, which it tells.
  bool FaultsGathered = false;
  /// Such a reader also checks types and looks for doubtful places.
  bool SourceChecked = false;
  std::string SimulationDir = my_getenv("/tmp");
  std::string SimulationZucDir = ".";
  std::string OutputDir = ".";
  std::string OutputFile;  ///< of generated texts; "" for the module's name
  std::list<std::string>* CompilationFileList = nullptr;  ///< ZUC and ZU files; may be null
};

/// Numbers that what a session makes bears in its names.
struct Counters {
  int GDataConstIndex = -1;  ///< last index given to a data constant
  int Indexation = 0;        ///< of intermediate signals
  int PauseNumber = 0, NothingNumber = 0, HaltNumber = 0, ParallelNumber = 0, SequenceNumber = 0;
  int PresentNumber = 0, LoopNumber = 0, LocalNumber = 0, WaitNumber = 0, AbortNumber = 0;
  int EmitNumber = 0, NoEmitNumber = 0, SustainUntilNumber = 0, RunNumber = 0, SustainNumber = 0;
  int AutomatonNumber = 0, MealyMachineNumber = 0, TransitionNumber = 0;
};

}  // namespace kiva

#pragma once

#include <string>
#include <vector>

#include "SIMULATOR_ZUC/set_reset.h"
#include "SIMULATOR_ZUC/signal_color.h"
#include "engine/context.h"

class QListWidget;
class QTableWidget;

namespace kiva {

/// The told lines about an evaluation without data, on the standard output.
void tell_evaluation(Module* module);

/// The bridge between a context and the panels. It holds no state of the simulation.
class Signal_eval {
 public:
  /// Writes the flags and the chosen inputs into the context, and gives it. Ends the process
  /// without a module.
  int* Get_contexts(Module* module, set_reset* flags, List_Signal_color* colors, int* context);
  /// Runs the equations once without data, and gives the context.
  int* bdds_evaluate(Module* module, int* context);

  // Each paints the first n rows by the states that the named signals have in the context;
  // IllegalOperationException for a name that the module lacks.
  void context_evaluate_color(QListWidget* list, Module* module, const int* context,
                              const std::string* names, int n);
  void context_evaluate_color_outputs(QTableWidget* table, Module* module, const int* context,
                                      const std::string* names, int n);
  /// Paints the text of each row instead, and selects on its way; nothing of the window calls it.
  void bdds_evaluate_color(QTableWidget* table, Module* module, const int* context,
                           const std::string* names, int n);

 private:
  /// Refreshes the manager.
  std::vector<SignalState> states_of(Module* module, const int* context, const std::string* names,
                                     int n);

  bddpp_manager* mananger = nullptr;
  std::vector<Signal_color> signals_color;
};

}  // namespace kiva

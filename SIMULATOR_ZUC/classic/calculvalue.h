#pragma once

#include <QThread>
#include <memory>
#include <mutex>

#include "SIMULATOR_ZUC/classic/evaluation.h"
#include "SIMULATOR_ZUC/classic/pluginmanager.h"

namespace kiva {

/// A thread that evaluates the equations of a module once, without data, and then loads plugins and
/// calls the last one. The module and the context are lent by the caller.
class CalculValue : public QThread {
  Q_OBJECT

 public:
  using QThread::QThread;
  ~CalculValue() override { wait(); }

  /// Held by whoever runs the equations of a module: the steps of the window and `evaluer`.
  static std::mutex& evaluation_mutex();

  /// Reports when no plugin has loaded, and ends.
  void run() override;
  void evaluer();

  int* context_after() const { return context; }
  const PluginManager* plugins() const { return pluginManager.get(); }

 public Q_SLOTS:
  void get_Module(Module* module) { pautom = module; }
  void get_Context(int* lent) { context = lent; }

 private:
  Module* pautom = nullptr;
  int* context = nullptr;
  std::unique_ptr<Signal_eval> bdd_eval;
  std::unique_ptr<PluginManager> pluginManager;
};

}  // namespace kiva

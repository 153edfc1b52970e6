#include "SIMULATOR_ZUC/classic/calculvalue.h"

#include <iostream>

#include "tarn/model/sexception.h"

namespace kiva {

std::mutex& CalculValue::evaluation_mutex() {
  static std::mutex mutex;
  return mutex;
}

void CalculValue::evaluer() {
  const std::lock_guard<std::mutex> guard(evaluation_mutex());
  bdd_eval = std::make_unique<Signal_eval>();
  context = bdd_eval->bdds_evaluate(pautom, context);
}

void CalculValue::run() {
  try {
    evaluer();
  } catch (const LibraryException& exception) {
    std::cerr << "***error:CalculValue:run: " << exception.text() << std::endl;
    return;
  }
  pluginManager = std::make_unique<PluginManager>();
  pluginManager->LoadAllPlugins();
  if (pluginManager->plugin == nullptr) {
    std::cerr << "***error:CalculValue:run: no plugin loaded" << std::endl;
    return;
  }
  pluginManager->plugin->evaluated(nullptr);
}

}  // namespace kiva

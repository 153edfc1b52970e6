#include "tarn/zu/run.h"

#include "tarn/model/sexception.h"

namespace kiva {

void Run::setRenamingTable(const std::list<std::pair<std::string, Signal*>>* renamings) {
  renaming_ = std::make_shared<Renaming>();
  if (renamings == nullptr) return;
  for (const auto& [formal, actual] : *renamings)
    if (!renaming_->emplace(formal, actual).second) throw HashTableAddException(formal);
}

Signal* Run::getRenamingSignal(const std::string& formal) const {
  auto at = renaming_->find(formal);
  return at == renaming_->end() ? nullptr : at->second;
}

}  // namespace kiva

#include "tarn/model/signal_list.h"

#include <algorithm>

namespace kiva {

// The keys are views of the signals' own names, which never change.

void signal_list::complete_index() const {
  for (; indexed_ < signals_.size(); ++indexed_) {
    Signal* signal = signals_[indexed_];
    by_original_.emplace(signal->getOriginalName(), signal);
    by_internal_.emplace(signal->getInternalName(), signal);
  }
}

void signal_list::remove(Signal* signal) {
  auto at = std::find(signals_.begin(), signals_.end(), signal);
  if (at == signals_.end()) return;
  signals_.erase(at);
  std::erase(plain_, signal);
  by_original_.clear();
  by_internal_.clear();
  indexed_ = 0;
}

void signal_list::clear() {
  signals_.clear();
  plain_.clear();
  by_original_.clear();
  by_internal_.clear();
  indexed_ = 0;
}

Signal* signal_list::find_original(const std::string& name) const {
  complete_index();
  auto at = by_original_.find(name);
  return at == by_original_.end() ? nullptr : at->second;
}

Signal* signal_list::find_internal(const std::string& name) const {
  complete_index();
  auto at = by_internal_.find(name);
  return at == by_internal_.end() ? nullptr : at->second;
}

}  // namespace kiva

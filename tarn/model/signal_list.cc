#include "tarn/model/signal_list.h"

#include <algorithm>

namespace kiva {

// The keys are views of the signals' own names, which never change.

void signal_list::push_back(Signal* signal) {
  signals_.push_back(signal);
  by_original_.emplace(signal->getOriginalName(), signal);
  by_internal_.emplace(signal->getInternalName(), signal);
}

void signal_list::remove(Signal* signal) {
  auto at = std::find(signals_.begin(), signals_.end(), signal);
  if (at == signals_.end()) return;
  signals_.erase(at);
  std::vector<Signal*> rest;
  rest.swap(signals_);
  clear();
  for (Signal* left : rest) push_back(left);
}

void signal_list::clear() {
  signals_.clear();
  by_original_.clear();
  by_internal_.clear();
}

Signal* signal_list::find_original(const std::string& name) const {
  auto at = by_original_.find(name);
  return at == by_original_.end() ? nullptr : at->second;
}

Signal* signal_list::find_internal(const std::string& name) const {
  auto at = by_internal_.find(name);
  return at == by_internal_.end() ? nullptr : at->second;
}

}  // namespace kiva

#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tarn/model/signal.h"

namespace kiva {

/// A list of signals in declaration order. Look-ups by name give what a walk from the front would
/// give, from an index that follows the list.
class signal_list {
 public:
  using const_iterator = std::vector<Signal*>::const_iterator;

  signal_list() = default;
  signal_list(std::initializer_list<Signal*> signals) {
    for (Signal* signal : signals) push_back(signal);
  }

  void push_back(Signal* signal) {
    signals_.push_back(signal);
    if (!signal->isWire()) plain_.push_back(signal);
  }
  /// Removes the signal where it first stands; nothing if it is not there.
  void remove(Signal* signal);
  void clear();

  /// The first signal of that name; null if there is none.
  Signal* find_original(const std::string& name) const;
  Signal* find_internal(const std::string& name) const;

  size_t size() const { return signals_.size(); }
  bool empty() const { return signals_.empty(); }
  Signal* operator[](size_t position) const { return signals_[position]; }
  const_iterator begin() const { return signals_.begin(); }
  const_iterator end() const { return signals_.end(); }
  /// Those that were no wires when they came, in the same order: statements make many wires.
  const std::vector<Signal*>& plain() const { return plain_; }

 private:
  using Index = std::unordered_map<std::string_view, Signal*>;
  /// Brings the index up to the list: many lists are never asked.
  void complete_index() const;

  std::vector<Signal*> signals_;
  std::vector<Signal*> plain_;
  mutable Index by_original_;
  mutable Index by_internal_;
  mutable size_t indexed_ = 0;  ///< number of signals in the index
};

}  // namespace kiva

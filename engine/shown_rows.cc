#include "engine/shown_rows.h"

namespace kiva {

void ShownRows::add(SignalRails rails) {
  scattered_.push_back(rails);
  const auto status_index = static_cast<std::uint32_t>(rails.status_index);
  const bool together = rails.value_index == rails.status_index + 1;
  apart_ = apart_ || !together;
  if (together && !stretches_.empty() &&
      stretches_.back().status_index + 2 * stretches_.back().count == status_index &&
      stretches_.back().row + stretches_.back().count == rows_)
    ++stretches_.back().count;
  else
    stretches_.push_back({rows_, 1, status_index});
  ++rows_;
}

namespace {

/// `state_of` without branches: 3 - 3 s - 2 v + 4 s v for known ones, 4 where one is 2.
inline SignalState state_of_pair(int status, int value) {
  const int known = 3 - status - ((status + value) << 1) + ((status & value) << 2);
  const int unknown = -((status | value) >> 1);
  return static_cast<SignalState>((known & ~unknown) | (4 & unknown));
}

/// Made into wide instructions: what is written is no part of what is read.
void show_pairs(const int* __restrict rails, size_t count, SignalState* __restrict out) {
  for (size_t k = 0; k < count; ++k) out[k] = state_of_pair(rails[2 * k], rails[2 * k + 1]);
}

}  // namespace

void ShownRows::show(const std::vector<int>& context, std::vector<SignalState>& shown) const {
  shown.resize(rows_);
  SignalState* out = shown.data();
  if (apart_ || stretches_.size() * 4 > rows_) {
    for (const SignalRails& rails : scattered_)
      *out++ = state_of_pair(context[static_cast<size_t>(rails.status_index)],
                             context[static_cast<size_t>(rails.value_index)]);
    return;
  }
  for (const Stretch& stretch : stretches_)
    show_pairs(context.data() + stretch.status_index, stretch.count, out + stretch.row);
}

}  // namespace kiva

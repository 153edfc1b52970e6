// The growth of the table of one call: fourfold, what the call has computed moved along.

#include "bdd/call_table.h"

#include "bdd/work_guard.h"

namespace kiva {

void call_table::next_stamp() {
  if (++stamp_ != 0) return;
  for (entry& e : entries_) e.stamp = 0;
  stamp_ = 1;
}

void call_table::grow() {
  WorkGuard::call();
  std::vector<entry> moved;
  moved.reserve(used_);
  for (std::size_t at = 0; at <= mask_; ++at) {
    if (entries_[at].stamp == stamp_) moved.push_back(entries_[at]);
  }
  next_stamp();
  set_size(64 - shift_ + 2);
  for (const entry& e : moved) put(e.key, e.value);
}

}  // namespace kiva

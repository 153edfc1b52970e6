#include "base/exhaustif.h"

#include <algorithm>
#include <numeric>
#include <ostream>

namespace kiva {

exhaustif_class::exhaustif_class(int n) {
  degree(n);
}

exhaustif_class::exhaustif_class(int n, const int* entries) {
  degree(n);
  order(entries);
}

void exhaustif_class::degree(int n) {
  order_.resize(static_cast<std::size_t>(std::max(n, 0)));
  std::iota(order_.begin(), order_.end(), 0);
  last_number_ = 0;
}

void exhaustif_class::order(const int* entries) {
  std::copy_n(entries, order_.size(), order_.begin());
}

int exhaustif_class::next(int i) {
  const int n = degree();
  if (n == 0) return 0;
  if (i < 0 || i >= n) i = n - 1;
  std::fill(order_.begin() + i + 1, order_.end(), 0);
  ++order_[i];
  last_number_ = i;
  for (int at = i; at < n;) {
    const auto place = order_.begin() + at;
    while (std::find(order_.begin(), place, *place) != place) ++*place;
    if (*place < n) {
      ++at;
      continue;
    }
    *place = 0;
    if (--at < 0) return 0;
    ++order_[at];
    last_number_ = std::min(last_number_, at);
  }
  return 1;
}

std::ostream& operator<<(std::ostream& out, const exhaustif_class& walk) {
  out << walk.degree() << ',' << walk.last_number_ << " (";
  const char* separator = "";
  for (int entry : walk.order_) {
    out << separator << entry;
    separator = ", ";
  }
  return out << ')';
}

}  // namespace kiva

// The distance counts letters put in, left out, changed, and neighbours exchanged (optimal string
// alignment).

#include "base/nearest_name.h"

#include <algorithm>

namespace kiva {

namespace {

size_t distance(const std::string& a, const std::string& b) {
  // Three rows of the table of distances between beginnings of the two.
  std::vector<size_t> before(b.size() + 1), above(b.size() + 1), row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    std::swap(before, above);
    std::swap(above, row);
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] != b[j - 1])});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        row[j] = std::min(row[j], before[j - 2] + 1);
    }
  }
  return row[b.size()];
}

}  // namespace

std::string nearest_name(const std::string& written, const std::vector<std::string>& names) {
  constexpr size_t longest = 100;
  std::string nearest;
  if (written.size() > longest) return nearest;
  size_t fewest = std::max<size_t>(1, written.size() / 3) + 1;
  for (const std::string& name : names) {
    // Their lengths alone may tell them apart.
    const size_t longer = std::max(name.size(), written.size());
    if (name == written || std::min(name.size(), written.size()) + fewest <= longer) continue;
    const size_t d = distance(written, name);
    if (d >= fewest || d >= longer) continue;
    fewest = d;
    nearest = name;
  }
  return nearest;
}

}  // namespace kiva

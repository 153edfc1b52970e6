#include "base/spelling.h"

#include <algorithm>
#include <cctype>

namespace kiva {

namespace {

bool same(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

/// Changes of single letters, a swap of two neighbours counting as one.
size_t distance(std::string_view a, std::string_view b) {
  std::vector<size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t replaced = last[j - 1] + (same(a[i - 1], b[j - 1]) ? 0 : 1);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
      if (i > 1 && j > 1 && same(a[i - 1], b[j - 2]) && same(a[i - 2], b[j - 1]))
        row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

}  // namespace

std::string nearest(std::string_view name, const std::vector<std::string>& candidates) {
  constexpr size_t longest = 64;
  if (name.size() > longest) return "";
  const size_t most = std::max<size_t>(1, name.size() / 3);
  std::string best;
  size_t least = most + 1;
  for (const std::string& candidate : candidates) {
    const size_t length = std::max(candidate.size(), name.size());
    if (length - std::min(candidate.size(), name.size()) >= least) continue;
    const size_t changes = distance(name, candidate);
    // One letter for another is no likeness.
    if (changes < least && changes < length) {
      least = changes;
      best = candidate;
    }
  }
  return best;
}

}  // namespace kiva

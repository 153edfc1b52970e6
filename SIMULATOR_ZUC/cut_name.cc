// A cut name is a head, an ellipsis and a tail. Another name looks alike if it begins and ends so,
// too; the tail must then go back to the last place in which the two differ.

#include "SIMULATOR_ZUC/cut_name.h"

#include <algorithm>

namespace kiva {

namespace {

const QChar ellipsis(0x2026);

/// Of the last character in which the longer tail tells the names apart.
int last_difference(const QString& name, const QString& other) {
  int same = 0;
  const int most = std::min(name.size(), other.size());
  while (same < most && name[name.size() - 1 - same] == other[other.size() - 1 - same]) ++same;
  return std::max(0, static_cast<int>(name.size()) - 1 - same);
}

}  // namespace

QString cut_name(const QString& name, const QFontMetrics& metrics, int width, int count,
                 const std::function<QString(int)>& name_at) {
  const QString plain = metrics.elidedText(name, Qt::ElideMiddle, width);
  const int cut = plain.indexOf(ellipsis);
  if (plain == name || cut < 0) return plain;
  const QString head = plain.left(cut), tail = plain.mid(cut + 1);
  int from = name.size() - tail.size();
  for (int i = 0; i < count; ++i) {
    const QString other = name_at(i);
    if (other != name && other.startsWith(head) && other.endsWith(tail))
      from = std::min(from, last_difference(name, other));
  }
  if (from == name.size() - tail.size()) return plain;
  int kept = from;
  const auto made = [&] { return name.left(kept) + ellipsis + name.mid(from); };
  while (kept > 0 && metrics.horizontalAdvance(made()) > width) --kept;
  return metrics.elidedText(made(), Qt::ElideRight, width);
}

}  // namespace kiva

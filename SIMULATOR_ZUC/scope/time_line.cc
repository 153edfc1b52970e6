#include "SIMULATOR_ZUC/scope/time_line.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "SIMULATOR_ZUC/scope/scope_look.h"

namespace kiva {

namespace {
constexpr size_t most_bars = 4;

int bar_height() {
  return ScopeLook::px(24);
}
int margin() {
  return ScopeLook::px(10);
}
}  // namespace

TimeLine::TimeLine(TimeControl* time, QWidget* parent) : QWidget(parent), time_(time) {
  setAccessibleName(tr("Run"));
  connect(time_, &TimeControl::moved, this, &TimeLine::follow);
  follow();
}

void TimeLine::follow() {
  setFixedHeight(sizeHint().height());
  if (time_->busy()) return;
  const Recording& recording = time_->recording();
  const Recording::Position here = recording.position();
  setAccessibleDescription(tr("instant %1 of %2, branch %3")
                               .arg(here.instant)
                               .arg(recording.branch(here.branch).last)
                               .arg(branch_name(recording, here.branch)));
  update();
}

QString TimeLine::branch_name(const Recording& recording, size_t branch) {
  const Recording::BranchInfo info = recording.branch(branch);
  if (info.parent == Recording::no_parent) return info.initialised ? tr("Init") : tr("main");
  return tr("%1: from %2 of %3")
      .arg(branch)
      .arg(info.from)
      .arg(recording.branch(info.parent).parent == Recording::no_parent
               ? branch_name(recording, info.parent)
               : QString::number(info.parent));
}

QSize TimeLine::sizeHint() const {
  const size_t bars = std::min(time_->busy() ? 1 : time_->recording().branches(), most_bars);
  return {200, static_cast<int>(bars) * bar_height() + ScopeLook::px(14)};
}

/// Those that are shown end with the last one, or the one that is shown.
size_t TimeLine::first_branch() const {
  const size_t count = time_->recording().branches();
  if (count <= most_bars) return 0;
  return std::min(time_->recording().position().branch, count - most_bars);
}

long TimeLine::last() const {
  long last = 1;
  for (size_t branch = 0; branch < time_->recording().branches(); ++branch)
    last = std::max(last, time_->recording().branch(branch).last);
  return last;
}

int TimeLine::x_of(long instant) const {
  return margin() + static_cast<int>(static_cast<double>(instant) * (width() - 2 * margin()) /
                                     static_cast<double>(last()));
}

void TimeLine::paintEvent(QPaintEvent*) {
  if (time_->busy()) return;
  QPainter painter(this);
  const ScopeLook& look = ScopeLook::current();
  const Recording& recording = time_->recording();
  const size_t first = first_branch();
  const size_t end = std::min(recording.branches(), first + most_bars);
  for (size_t branch = first; branch < end; ++branch) {
    const Recording::BranchInfo info = recording.branch(branch);
    const int y = static_cast<int>(branch - first) * bar_height() + ScopeLook::px(18);
    const bool shown = branch == recording.position().branch;
    painter.setPen(QPen(shown ? look.accent : look.faint, ScopeLook::px(shown ? 4 : 2)));
    painter.drawLine(x_of(info.from), y, x_of(info.last), y);
    if (info.parent != Recording::no_parent) {
      painter.setPen(QPen(look.faint, 1, Qt::DashLine));
      painter.drawLine(x_of(info.from), y - bar_height() / 2, x_of(info.from), y);
    }
    const QString name = branch_name(recording, branch);
    painter.setPen(look.faint);
    const int wide = painter.fontMetrics().horizontalAdvance(name);
    const int x = std::min(x_of(info.last) + margin(), width() - wide - 4);
    painter.drawText(x, y + ScopeLook::px(4) - (x < x_of(info.last) ? bar_height() / 2 : 0), name);
    if (!shown) continue;
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.accent);
    painter.drawEllipse(QPoint(x_of(recording.position().instant), y), ScopeLook::px(6),
                        ScopeLook::px(6));
  }
}

void TimeLine::mousePressEvent(QMouseEvent* event) {
  if (time_->busy()) return;
  const Recording& recording = time_->recording();
  const size_t branch = std::min(
      recording.branches() - 1,
      first_branch() + static_cast<size_t>(std::max(0, event->pos().y() - 3)) / bar_height());
  const double share =
      static_cast<double>(event->pos().x() - margin()) / std::max(1, width() - 2 * margin());
  const long instant = std::lround(share * static_cast<double>(last()));
  time_->to(
      {branch, std::clamp(instant, recording.first_instant(), recording.branch(branch).last)});
}

}  // namespace kiva

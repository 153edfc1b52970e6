#include "SIMULATOR_ZUC/scope/wave_view.h"

#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <climits>
#include <cmath>
#include <set>
#include <utility>

#include "SIMULATOR_ZUC/cut_name.h"
#include "SIMULATOR_ZUC/row_state.h"
#include "SIMULATOR_ZUC/scope/scope_look.h"
#include "engine/context.h"

namespace kiva {

namespace {

int badge() {
  return ScopeLook::px(18);
}
int margin() {
  return ScopeLook::px(8);
}
int widest_column() {
  return ScopeLook::px(96);
}

/// Locals that the compiler made: registers, what they move to, and what nothing computes.
std::vector<bool> made_locals(const Simulation& simulation) {
  Module* module = simulation.module();
  std::set<long> of_registers;
  for (const RegisterRails& reg : register_rails(module))
    of_registers.insert({reg.actual.status_index, reg.next.status_index});
  std::vector<bool> made;
  for (const std::string& name : simulation.local_names()) {
    long status = 0, value = 0;
    get_id_signals(module, name, status, value);
    made.push_back(of_registers.contains(status) ||
                   module->getBddWood()->exp_by_index(status) == nullptr);
  }
  return made;
}

}  // namespace

WaveView::WaveView(TimeControl* time, QWidget* parent) : QAbstractScrollArea(parent), time_(time) {
  setAccessibleName(tr("Waves"));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  make_rows();
  connect(time_, &TimeControl::moved, this, &WaveView::follow);
  connect(time_, &TimeControl::marked, this, &WaveView::follow);
  follow();
}

void WaveView::make_rows() {
  const Simulation& simulation = time_->recording().simulation();
  const SignalNames names(simulation);
  const std::vector<bool> made = made_locals(simulation);
  const struct {
    SignalPlace::List list;
    QString title;
  } groups[] = {{SignalPlace::input, tr("Inputs")},
                {SignalPlace::output, tr("Outputs")},
                {SignalPlace::local, tr("Locals")},
                {SignalPlace::register_, tr("Registers")}};
  for (const auto& [list, title] : groups) {
    const bool registers = list == SignalPlace::register_;
    all_.push_back({true, {list, 0}, title, registers});
    for (size_t row = 0; row < names.names(list).size(); ++row)
      all_.push_back({false,
                      {list, row},
                      QString::fromStdString(names.name({list, row})),
                      registers || (list == SignalPlace::local && made[row])});
  }
  show_made(false);
}

void WaveView::set_declared(const std::vector<size_t>& rows) {
  for (Row& row : all_)
    if (!row.title && row.place.list == SignalPlace::local)
      row.made = std::ranges::find(rows, row.place.row) == rows.end();
  show_made(shows_made_);
}

void WaveView::show_made(bool shown) {
  shows_made_ = shown;
  const Row chosen = chosen_ < 0 ? Row{} : rows_[static_cast<size_t>(chosen_)];
  rows_.clear();
  for (const Row& row : all_) {
    if (row.made && !shown) continue;
    if (row.title && !rows_.empty() && rows_.back().title) rows_.pop_back();
    rows_.push_back(row);
  }
  if (!rows_.empty() && rows_.back().title) rows_.pop_back();
  chosen_ = -1;
  int widest = 0;
  QFont chosen_font = font();
  chosen_font.setBold(true);
  const QFontMetrics metrics(chosen_font);
  for (size_t i = 0; i < rows_.size(); ++i) {
    widest = std::max(widest, metrics.horizontalAdvance(rows_[i].name));
    if (!chosen.name.isEmpty() && rows_[i].name == chosen.name &&
        rows_[i].place.list == chosen.place.list)
      chosen_ = static_cast<int>(i);
  }
  names_width_ =
      std::clamp(widest + badge() + 4 * margin(), ScopeLook::px(120), ScopeLook::px(360));
  fit_bars();
  viewport()->update();
}

void WaveView::move_chosen(int places) {
  const int to = chosen_ + places;
  if (chosen_ < 0 || to < 0 || to >= static_cast<int>(rows_.size())) return;
  Row& one = rows_[static_cast<size_t>(chosen_)];
  Row& other = rows_[static_cast<size_t>(to)];
  if (other.title) return;
  const auto same = [](const Row& a) {
    return [&a](const Row& b) {
      return !b.title && b.place.list == a.place.list && b.place.row == a.place.row;
    };
  };
  std::iter_swap(std::ranges::find_if(all_, same(one)), std::ranges::find_if(all_, same(other)));
  std::swap(one, other);
  seen_version_ = -1;
  choose(to);
}

void WaveView::choose(int row) {
  if (row < 0 || row >= static_cast<int>(rows_.size()) || rows_[static_cast<size_t>(row)].title)
    return;
  chosen_ = row;
  follow_chosen();
  viewport()->update();
  tell_shown();
  Q_EMIT chosen_changed();
}

/// The chosen row comes into sight.
void WaveView::follow_chosen() {
  if (chosen_ < 0) return;
  const int y = chosen_ * ScopeLook::row_height();
  QScrollBar* bar = verticalScrollBar();
  bar->setValue(
      std::clamp(bar->value(), std::min(y, y + ScopeLook::row_height() - bar->pageStep()), y));
}

void WaveView::choose_place(SignalPlace signal) {
  const auto is_it = [&](const Row& row) {
    return !row.title && row.place.list == signal.list && row.place.row == signal.row;
  };
  if (std::ranges::none_of(rows_, is_it)) show_made(true);
  choose(static_cast<int>(std::ranges::find_if(rows_, is_it) - rows_.begin()));
}

bool WaveView::find(const QString& text) {
  const int count = static_cast<int>(rows_.size());
  for (int step = 1; step <= count; ++step) {
    const int row = (std::max(chosen_, -1) + step) % count;
    if (rows_[static_cast<size_t>(row)].title ||
        !rows_[static_cast<size_t>(row)].name.contains(text, Qt::CaseInsensitive))
      continue;
    choose(row);
    return true;
  }
  return false;
}

void WaveView::zoom(double factor) {
  if (time_->busy()) return;
  const long here = time_->recording().position().instant;
  const int x = x_of(here);
  const int wanted =
      std::clamp(static_cast<int>(std::lround(column_ * factor)), 1, widest_column());
  column_ = wanted == column_ && factor > 1 ? std::min(column_ + 1, widest_column()) : wanted;
  fit_bars();
  // The chosen instant stays where it is.
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() + x_of(here) - x);
  viewport()->update();
}

long WaveView::shown_last() const {
  Recording& recording = time_->recording();
  return recording.branch(recording.position().branch).last;
}

int WaveView::x_of(long instant) const {
  return names_width_ + static_cast<int>((instant - 1) * column_) - horizontalScrollBar()->value();
}

long WaveView::instant_at(int x) const {
  return (x - names_width_ + horizontalScrollBar()->value()) / column_ + 1;
}

/// Marks have a line of their own, above the numbers.
int WaveView::ruler_height() const {
  return ScopeLook::px(time_->marks().empty() ? 26 : 44);
}

int WaveView::row_at(int y) const {
  if (y < ruler_height()) return -1;
  const int row = (y - ruler_height() + verticalScrollBar()->value()) / ScopeLook::row_height();
  return row < static_cast<int>(rows_.size()) ? row : -1;
}

QRect WaveView::cell(int row, long instant) const {
  return {x_of(instant),
          ruler_height() + row * ScopeLook::row_height() - verticalScrollBar()->value(), column_,
          ScopeLook::row_height()};
}

void WaveView::fit_bars() {
  if (time_->busy()) return;
  const int width = viewport()->width() - names_width_;
  const int height = viewport()->height() - ruler_height();
  const long wanted = std::min<long>((shown_last() + 1) * column_, INT_MAX / 2);
  horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(wanted) - width));
  horizontalScrollBar()->setPageStep(std::max(1, width));
  horizontalScrollBar()->setSingleStep(column_);
  const int rows = static_cast<int>(rows_.size()) * ScopeLook::row_height();
  verticalScrollBar()->setRange(0, std::max(0, rows - height));
  verticalScrollBar()->setPageStep(std::max(1, height));
  verticalScrollBar()->setSingleStep(ScopeLook::row_height());
}

/// The chosen instant comes into sight; what a run makes does when it has ended.
void WaveView::follow() {
  if (time_->busy()) return;
  fit_bars();
  const int x = x_of(time_->recording().position().instant);
  QScrollBar* bar = horizontalScrollBar();
  if (x < names_width_) bar->setValue(bar->value() - (names_width_ - x) - column_);
  if (x + 2 * column_ > viewport()->width())
    bar->setValue(bar->value() + x + 2 * column_ - viewport()->width());
  tell_shown();
  viewport()->update();
}

/// For who does not see the drawing: the chosen signal in the shown instant.
void WaveView::tell_shown() {
  if (chosen_ < 0 || time_->busy()) return;
  const Row& row = rows_[static_cast<size_t>(chosen_)];
  const Recording::Position here = time_->recording().position();
  const SimulationState& state = time_->recording().state_at(here);
  setAccessibleDescription(told(row, here.instant, shown_state(state, row.place),
                                row.place.list <= SignalPlace::output
                                    ? QString::fromStdString(shown_value(state, row.place))
                                    : QString()));
}

QString WaveView::told(const Row& row, long instant, SignalState state, const QString& value) {
  const QString text = tr("%1 is %2 at %3").arg(row.name, label_of(state)).arg(instant);
  return value.isEmpty() || value == "--" ? text : text + ": " + value;
}

void WaveView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  follow();
  follow_chosen();
}

void WaveView::look_changed() {
  ensurePolished();
  const int scale = ScopeLook::px(100);
  column_ = std::clamp(column_ * scale / std::exchange(scale_, scale), 1, widest_column());
  setMinimumSize(ScopeLook::px(260), ScopeLook::px(120));
  show_made(shows_made_);
  follow_chosen();
}

std::vector<std::pair<long, QString>> WaveView::marks() const {
  const Recording& recording = time_->recording();
  std::vector<std::pair<long, QString>> shown;
  for (const auto& [at, text] : time_->marks())
    if (at.instant <= shown_last() &&
        recording.owner({recording.position().branch, at.instant}) == at)
      shown.emplace_back(at.instant, QString::fromStdString(text));
  return shown;
}

bool WaveView::next_change(int direction) {
  if (chosen_ < 0 || time_->busy()) return false;
  Recording& recording = time_->recording();
  const SignalPlace place = rows_[static_cast<size_t>(chosen_)].place;
  const Recording::Position here = recording.position();
  if (direction < 0) {
    // The instant shown may be the one that changed: then the change before it.
    const long found = recording.since(place, here, LONG_MAX);
    const long to = found == here.instant
                        ? recording.since(place, {here.branch, here.instant - 1}, LONG_MAX)
                        : found;
    return to > 0 && time_->to({here.branch, to});
  }
  const SignalState state = shown_state(recording.state_at(here), place);
  for (long instant = here.instant + 1; instant <= shown_last(); ++instant)
    if (shown_state(recording.state_at({here.branch, instant}), place) != state)
      return time_->to({here.branch, instant});
  return false;
}

// Looking up ----------------------------------------------------------------------------------

void WaveView::look_up(long from, long to) {
  const bool same = time_->version() == seen_version_ && rows_.size() == seen_rows_;
  if (same && from == seen_from_ && to == seen_to_) return;
  Recording& recording = time_->recording();
  const size_t branch = recording.position().branch;
  std::vector<Seen> before = std::exchange(seen_, {});
  for (long instant = from; instant <= to; ++instant) {
    if (same && instant >= seen_from_ && instant <= seen_to_) {
      seen_.push_back(std::move(before[static_cast<size_t>(instant - seen_from_)]));
      continue;
    }
    const SimulationState& state = recording.state_at({branch, instant});
    Seen& seen = seen_.emplace_back();
    for (const Row& row : rows_) {
      seen.states.push_back(row.title ? SignalState::unknown : shown_state(state, row.place));
      const bool has_text = !row.title && row.place.list <= SignalPlace::output &&
                            shown_value(state, row.place) != "--";
      seen.texts.push_back(has_text ? QString::fromStdString(shown_value(state, row.place))
                                    : QString());
    }
  }
  seen_from_ = from;
  seen_to_ = to;
  seen_version_ = time_->version();
  seen_rows_ = rows_.size();
}

// Drawing -------------------------------------------------------------------------------------

void WaveView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  const ScopeLook& look = ScopeLook::current();
  painter.fillRect(viewport()->rect(), look.pane);
  if (time_->busy()) {
    painter.setPen(look.faint);
    painter.drawText(viewport()->rect(), Qt::AlignCenter, tr("instant %1").arg(time_->progress()));
    return;
  }
  const long from = std::max<long>(1, instant_at(names_width_));
  const long to = std::min(shown_last(), instant_at(viewport()->width()));
  look_up(from, to);
  const int first = verticalScrollBar()->value() / ScopeLook::row_height();
  for (int row = first; row < static_cast<int>(rows_.size()); ++row) {
    const int y = cell(row, from).top();
    if (y > viewport()->height()) break;
    paint_row(painter, row, y, from, to);
  }
  paint_ruler(painter, from, to);
  if (second_ > 0) paint_cursor(painter, second_, look.faint);
  paint_cursor(painter, time_->recording().position().instant, look.accent);
  if (shown_last() == 0) {
    painter.setPen(look.faint);
    painter.drawText(viewport()->rect().adjusted(names_width_, 0, 0, 0), Qt::AlignCenter,
                     tr("Press Enter for the first instant"));
  }
}

void WaveView::paint_cursor(QPainter& painter, long instant, const QColor& colour) {
  if (instant < 1 || x_of(instant) + column_ < names_width_) return;
  const QRect column(x_of(instant), 0, std::max(column_, 2), viewport()->height());
  QColor shade = colour;
  shade.setAlpha(38);
  painter.setClipRect(names_width_, 0, viewport()->width(), viewport()->height());
  painter.fillRect(column, shade);
  painter.fillRect(QRect(column.left(), 0, 2, column.height()), colour);
  painter.setClipping(false);
}

void WaveView::paint_ruler(QPainter& painter, long from, long to) {
  const ScopeLook& look = ScopeLook::current();
  painter.fillRect(0, 0, viewport()->width(), ruler_height(), look.pane);
  painter.setPen(look.line);
  painter.drawLine(0, ruler_height() - 1, viewport()->width(), ruler_height() - 1);
  const int wide = painter.fontMetrics().horizontalAdvance(QString::number(to)) + margin();
  long step = 1;
  for (int factor = 0; step * column_ < wide; ++factor) step *= factor % 3 == 1 ? 5 : 2;
  painter.setClipRect(names_width_, 0, viewport()->width(), ruler_height());
  const long here = time_->recording().position().instant;
  for (long instant = from - from % step; instant <= to; instant += step) {
    if (instant < 1) continue;
    painter.setPen(instant == here ? look.accent : look.faint);
    const int line = ScopeLook::row_height();
    painter.drawText(QRect(x_of(instant), ruler_height() - line, std::max(column_, wide), line),
                     column_ >= wide ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter,
                     QString::number(instant));
  }
  for (const auto& [instant, text] : marks()) {
    painter.setPen(look.accent);
    painter.drawText(QRect(x_of(instant), 0, viewport()->width(), ScopeLook::row_height()),
                     Qt::AlignLeft | Qt::AlignVCenter, QString::fromUtf8("\u25be") + text);
  }
  painter.setClipping(false);
}

void WaveView::paint_name(QPainter& painter, const Row& row, int y, bool chosen) {
  const ScopeLook& look = ScopeLook::current();
  QFont font = painter.font();
  font.setBold(chosen || row.title);
  painter.setFont(font);
  painter.setPen(row.title ? look.faint : look.text);
  const int left = row.title ? margin() : 2 * margin() + badge();
  const int room = names_width_ - left - margin();
  painter.drawText(QRect(left, y, room, ScopeLook::row_height()), Qt::AlignLeft | Qt::AlignVCenter,
                   cut_name(row.name, painter.fontMetrics(), room, static_cast<int>(rows_.size()),
                            [this](int i) { return rows_[static_cast<size_t>(i)].name; }));
  font.setBold(false);
  painter.setFont(font);
}

void WaveView::paint_row(QPainter& painter, int number, int y, long from, long to) {
  const ScopeLook& look = ScopeLook::current();
  const Row& row = rows_[static_cast<size_t>(number)];
  if (row.title) {
    paint_name(painter, row, y, false);
    return;
  }
  painter.setClipRect(names_width_, 0, viewport()->width(), viewport()->height());
  painter.setPen(look.line);
  painter.drawLine(0, y + ScopeLook::row_height() - 1, viewport()->width(),
                   y + ScopeLook::row_height() - 1);
  const auto column = static_cast<size_t>(number);
  for (long instant = from; instant <= to; ++instant) {
    const Seen& seen = seen_[static_cast<size_t>(instant - from)];
    const QRect at(x_of(instant), y, column_, ScopeLook::row_height());
    const bool same =
        instant > from &&
        seen_[static_cast<size_t>(instant - from - 1)].states[column] == seen.states[column];
    paint_state(painter, at, seen.states[column], !same);
    const QString& text = seen.texts[column];
    if (text.isEmpty() || column_ < 12) continue;
    painter.setPen(look.text);
    painter.drawText(at.adjusted(3, 0, -2, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, column_ - 5));
  }
  painter.setClipping(false);
  painter.fillRect(0, y, names_width_, ScopeLook::row_height() - 1, look.pane);
  paint_name(painter, row, y, number == chosen_);
  const Recording::Position here = time_->recording().position();
  const SignalState now = here.instant >= from && here.instant <= to
                              ? seen_[static_cast<size_t>(here.instant - from)].states[column]
                              : shown_state(time_->recording().state_at(here), row.place);
  const QRect box(margin(), y + (ScopeLook::row_height() - badge()) / 2, badge(), badge());
  const bool filled = now == SignalState::one;
  painter.setPen(filled ? look.one : look.faint);
  painter.setBrush(filled ? look.one : look.pane);
  painter.drawRoundedRect(box, 4, 4);
  painter.setPen(filled ? look.pane : look.text);
  painter.drawText(box, Qt::AlignCenter, QString(QChar(letter_of(now))));
  painter.setBrush(Qt::NoBrush);
}

// One is high and filled, Zero low, Bottom low and dashed, Top filled in its own colour over the
// whole height, what is unknown hatched.
void WaveView::paint_state(QPainter& painter, QRect cell, SignalState state, bool rises) const {
  const ScopeLook& look = ScopeLook::current();
  const int high = cell.top() + 5, low = cell.bottom() - 4;
  const int left = cell.left(), right = cell.right() + 1;
  switch (state) {
    case SignalState::one:
      painter.fillRect(QRect(left, high, cell.width(), low - high), look.one_fill);
      painter.fillRect(QRect(left, high, cell.width(), 2), look.one);
      if (rises && column_ > 2) painter.fillRect(QRect(left, high, 2, low - high), look.one);
      return;
    case SignalState::top:
      painter.fillRect(QRect(left, high, cell.width(), low - high), look.top);
      if (column_ < 12) return;
      painter.setPen(look.pane);
      painter.drawText(cell, Qt::AlignCenter, "T");
      return;
    case SignalState::unknown: {
      QBrush hatch(look.unknown, Qt::BDiagPattern);
      painter.fillRect(QRect(left, high, cell.width(), low - high), hatch);
      return;
    }
    case SignalState::zero:
    case SignalState::bottom:
      break;
  }
  QPen pen(look.faint, 1);
  if (state == SignalState::bottom) pen.setDashPattern({2, 3});
  painter.setPen(pen);
  painter.drawLine(left, low, right, low);
}

}  // namespace kiva

#include "SIMULATOR_ZUC/scope/source_text.h"

#include <QFile>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "SIMULATOR_ZUC/scope/scope_look.h"
#include "SIMULATOR_ZUC/scope/source_colours.h"

namespace kiva {

namespace {

const char* const comment_begin = ";;";

/// Columns of the map count bytes.
int characters(const QTextBlock& block, int bytes) {
  return QString::fromUtf8(block.text().toUtf8().left(bytes)).size();
}

QColor colour_of(const Light& light) {
  const ScopeLook& look = ScopeLook::current();
  if (light.killed) return look.killed;
  if (light.started) return look.started;
  return light.waits ? look.one_fill : look.ended;
}

bool holds(const SourcePlace& place, int line, int column) {
  const auto at = std::pair(line, column);
  return std::pair(place.first_line, place.first_column) <= at &&
         at <= std::pair(place.last_line, place.last_column);
}

}  // namespace

class SourceMargin : public QWidget {
 public:
  explicit SourceMargin(SourceText* text) : QWidget(text), text_(text) {
    setAccessibleName(QObject::tr("Lines and what they do"));
  }

 protected:
  void paintEvent(QPaintEvent* event) override { text_->paint_margin(event); }

 private:
  SourceText* text_;
};

const std::vector<SourceText::Sign>& SourceText::signs() {
  static const std::vector<Sign> all{
      {"\u25b8", QT_TR_NOOP("started now"), &Light::started,
       [] { return ScopeLook::current().started; }},
      {"\u25cf", QT_TR_NOOP("waits or goes on"), &Light::waits,
       [] { return ScopeLook::current().one_fill; }},
      {"\u2713", QT_TR_NOOP("ended now"), &Light::ended, [] { return ScopeLook::current().ended; }},
      {"\u2715", QT_TR_NOOP("killed now"), &Light::killed,
       [] { return ScopeLook::current().killed; }},
  };
  return all;
}

SourceText::SourceText(const LitSource::Instance& instance, QWidget* parent)
    : QPlainTextEdit(parent),
      module_(QString::fromStdString(instance.module)),
      margin_(new SourceMargin(this)) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setFrameShape(QFrame::NoFrame);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setAccessibleName(tr("Source of %1").arg(QString::fromStdString(instance.path)));
  QFile file(QFile::decodeName(instance.file.c_str()));
  if (file.open(QIODevice::ReadOnly)) setPlainText(QString::fromUtf8(file.readAll()));
  colours_ = make_source_colours(document());
  const QRegularExpression head("\\bmodule\\s+(\\S+?)\\s*:");
  last_line_ = blockCount();
  bool found = false;
  for (int line = 1; line <= blockCount(); ++line) {
    const QRegularExpressionMatch match = head.match(without_comment(line));
    if (!match.hasMatch()) continue;
    if (found) {
      last_line_ = line - 1;
      break;
    }
    found = match.captured(1) == module_;
    if (found) first_line_ = first_line_shown_ = line;
  }
  connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
    if (dy != 0)
      margin_->scroll(0, dy);
    else
      margin_->update(0, rect.y(), margin_->width(), rect.height());
  });
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
    if (hasFocus()) Q_EMIT line_chosen(current_line());
  });
  look_changed();
}

void SourceText::look_changed() {
  setFont(ScopeLook::source_font());
  document()->setDefaultFont(font());
  kiva::look_changed(colours_);
  fit_margin();
  show_marks();
}

int SourceText::margin_width() const {
  const QString widest = QString::number(std::max(10, blockCount())) + "  ";
  return fontMetrics().horizontalAdvance(widest) + 4 * fontMetrics().horizontalAdvance("\u25cf");
}

void SourceText::fit_margin() {
  setViewportMargins(margin_width(), 0, 0, 0);
  const QRect inside = contentsRect();
  margin_->setGeometry(inside.left(), inside.top(), margin_width(), inside.height());
}

/// A module far down in its file comes into sight when it is first seen.
void SourceText::showEvent(QShowEvent* event) {
  QPlainTextEdit::showEvent(event);
  constexpr int far_down = 8;
  if (const int line = std::exchange(first_line_shown_, 0); line > far_down)
    verticalScrollBar()->setValue(line - 1);
}

void SourceText::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  fit_margin();
}

QString SourceText::signs_of_line(int line) const {
  const auto at = by_line_.find(line);
  QString text;
  if (at == by_line_.end()) return text;
  for (const Sign& sign : signs())
    if (at->second.*sign.lit) text += QString::fromUtf8(sign.sign);
  return text;
}

void SourceText::paint_margin(QPaintEvent* event) {
  QPainter painter(margin_);
  const ScopeLook& look = ScopeLook::current();
  painter.fillRect(event->rect(), look.pane);
  painter.setFont(font());
  const int sign = fontMetrics().horizontalAdvance("\u25cf");
  const int height = fontMetrics().height();
  for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
    const QRectF at = blockBoundingGeometry(block).translated(contentOffset());
    if (at.top() > event->rect().bottom()) break;
    const int line = block.blockNumber() + 1;
    const int y = static_cast<int>(at.top());
    painter.setPen(look.text);
    painter.drawText(QRect(0, y, 4 * sign, height), Qt::AlignRight, signs_of_line(line));
    const bool marked = std::ranges::find(marked_, line) != marked_.end();
    painter.setPen(marked ? look.accent : look.faint);
    painter.drawText(QRect(4 * sign, y, margin_->width() - 5 * sign, height), Qt::AlignRight,
                     QString::number(line));
  }
}

QTextCursor SourceText::cursor_at(const SourcePlace& place) const {
  const QTextBlock first = document()->findBlockByNumber(place.first_line - 1);
  const QTextBlock last = document()->findBlockByNumber(place.last_line - 1);
  if (!first.isValid() || !last.isValid()) return {};
  QTextCursor cursor(first);
  cursor.setPosition(first.position() + characters(first, place.first_column - 1));
  cursor.setPosition(last.position() + characters(last, place.last_column),
                     QTextCursor::KeepAnchor);
  return cursor;
}

void SourceText::light(const std::vector<LitSource::Lit>& lit,
                       const std::vector<LitSource::Looked>& looked) {
  lit_ = lit;
  looked_ = looked;
  by_line_.clear();
  for (const auto& [place, light] : lit_) {
    Light& line = by_line_[place.first_line];
    for (const Sign& sign : signs()) line.*sign.lit = line.*sign.lit || light.*sign.lit;
  }
  show_marks();
  margin_->update();
}

void SourceText::show_marks() {
  const ScopeLook& look = ScopeLook::current();
  QList<QTextEdit::ExtraSelection> marks;
  for (int line : marked_) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = QTextCursor(document()->findBlockByNumber(line - 1));
    mark.format.setBackground(look.paper);
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    marks.push_back(mark);
  }
  for (const auto& [place, light] : lit_) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = cursor_at(place);
    mark.format.setBackground(colour_of(light));
    if (!mark.cursor.isNull()) marks.push_back(mark);
  }
  for (const auto& [place, holds] : looked_) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = cursor_at(place);
    mark.format.setUnderlineStyle(holds ? QTextCharFormat::SingleUnderline
                                        : QTextCharFormat::DotLine);
    mark.format.setUnderlineColor(holds ? look.one : look.faint);
    if (holds) mark.format.setFontWeight(QFont::Bold);
    if (!mark.cursor.isNull()) marks.push_back(mark);
  }
  setExtraSelections(marks);
}

void SourceText::mark_lines(const std::vector<int>& lines) {
  marked_ = lines;
  show_marks();
  margin_->update();
  if (lines.empty()) return;
  const int top = firstVisibleBlock().blockNumber() + 1;
  const int shown = viewport()->height() / std::max(1, fontMetrics().lineSpacing());
  if (std::ranges::any_of(lines, [&](int line) { return line >= top && line < top + shown; }))
    return;
  verticalScrollBar()->setValue(std::max(0, lines.back() - 1 - shown / 2));
}

QString SourceText::without_comment(int line) const {
  const QString text = document()->findBlockByNumber(line - 1).text();
  return text.left(text.indexOf(comment_begin));
}

QStringList SourceText::names_of_line(int line) const {
  if (line < first_line_ || line > last_line_) return {};
  static const QRegularExpression name("[\\p{L}_][\\p{L}\\p{N}_]*");
  QStringList names;
  auto match = name.globalMatch(without_comment(line));
  while (match.hasNext()) names.push_back(match.next().captured());
  names.removeDuplicates();
  return names;
}

std::vector<int> SourceText::lines_of(const QString& name) const {
  std::vector<int> lines;
  for (int line = first_line_; line <= last_line_; ++line)
    if (names_of_line(line).contains(name)) lines.push_back(line);
  return lines;
}

QString SourceText::text_of(const SourcePlace& place) const {
  return cursor_at(place).selectedText().simplified();
}

QString SourceText::words_at(int line, int column) const {
  QStringList words;
  for (const auto& [place, value] : looked_)
    if (holds(place, line, column))
      words += value ? tr("this condition holds") : tr("this condition does not hold");
  for (const auto& [place, light] : lit_) {
    if (!holds(place, line, column)) continue;
    for (const Sign& sign : signs())
      if (light.*sign.lit) words += tr(sign.words);
  }
  words.removeDuplicates();
  return words.join(", ");
}

bool SourceText::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QPlainTextEdit::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QTextCursor at = cursorForPosition(help->pos());
  const int bytes = at.block().text().left(at.positionInBlock()).toUtf8().size();
  QToolTip::showText(help->globalPos(), words_at(at.blockNumber() + 1, bytes + 1), viewport());
  return true;
}

}  // namespace kiva

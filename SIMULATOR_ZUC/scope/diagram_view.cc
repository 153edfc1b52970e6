#include "SIMULATOR_ZUC/scope/diagram_view.h"

#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "SIMULATOR_ZUC/scope/scope_look.h"
#include "engine/drawing/svg.h"

namespace kiva {

namespace {

constexpr double line_spacing = 1.25;
constexpr double thick = 3;

bool lit(const std::vector<bool>& which, size_t n) {
  return n < which.size() && which[n];
}

QPointF point(const DrawnPoint& at) {
  return {at.x, at.y};
}

}  // namespace

DiagramView::DiagramView(QWidget* parent) : QWidget(parent) {
  setAccessibleName(tr("Automaton"));
}

void DiagramView::show_diagram(const Diagram* diagram) {
  diagram_ = diagram;
  layout_ = diagram == nullptr ? DiagramLayout() : layout_of(*diagram);
  light_ = {};
  fit();
}

void DiagramView::light(const DiagramLight& light) {
  light_ = light;
  setAccessibleDescription(told());
  update();
}

void DiagramView::zoom(double factor) {
  scale_ = std::clamp(scale_ * factor, 0.25, 4.0);
  fit();
}

void DiagramView::fit() {
  const double points = scale_ * ScopeLook::px(100) / 100;
  setFixedSize(static_cast<int>(std::ceil(layout_.width * points)) + 1,
               static_cast<int>(std::ceil(layout_.height * points)) + 1);
  update();
}

QString DiagramView::told() const {
  if (diagram_ == nullptr) return {};
  QStringList words;
  const auto name = [&](size_t node) { return QString::fromStdString(diagram_->nodes[node].name); };
  for (size_t n = 0; n < diagram_->nodes.size(); ++n)
    if (lit(light_.is, n)) words += tr("in %1").arg(name(n));
  for (size_t n = 0; n < diagram_->arcs.size(); ++n) {
    const Diagram::Arc& arc = diagram_->arcs[n];
    if (!lit(light_.fired, n)) continue;
    words += arc.from == Diagram::nowhere ? tr("begins with %1").arg(name(arc.to))
                                          : tr("%1 to %2").arg(name(arc.from), name(arc.to));
  }
  for (size_t n = 0; n < diagram_->nodes.size(); ++n)
    if (lit(light_.next, n)) words += tr("next %1").arg(name(n));
  return words.join(", ");
}

std::string DiagramView::svg() const {
  return diagram_ == nullptr ? "" : svg_text(*diagram_, layout_, &light_);
}

QFont DiagramView::font() const {
  QFont font("DejaVu Sans");
  font.setPixelSize(static_cast<int>(DiagramLayout::text_size));
  return font;
}

void DiagramView::draw_lines(QPainter& painter, QPointF centre,
                             const std::vector<std::string>& lines, const QFont& font,
                             const QColor& ground) const {
  painter.setFont(font);
  const double step = DiagramLayout::text_size * line_spacing;
  double y = centre.y() - step * static_cast<double>(lines.size()) / 2;
  const QFontMetricsF metrics(font);
  for (const std::string& line : lines) {
    const QString text = QString::fromStdString(line);
    const double wide = metrics.horizontalAdvance(text) + 2;
    const QRectF room(centre.x() - wide / 2, y, wide, step);
    if (ground.isValid()) painter.fillRect(room, ground);
    painter.drawText(room, Qt::AlignCenter | Qt::TextDontClip, text);
    y += step;
  }
}

void DiagramView::draw_arc(QPainter& painter, size_t n) const {
  const DiagramLayout::Arc& arc = layout_.arcs[n];
  if (arc.curve.empty()) return;
  const ScopeLook& look = ScopeLook::current();
  const bool fired = lit(light_.fired, n);
  const QColor colour = fired ? look.one : look.text;
  QPainterPath path(point(arc.curve[0]));
  for (size_t i = 1; i + 2 < arc.curve.size(); i += 3)
    path.cubicTo(point(arc.curve[i]), point(arc.curve[i + 1]), point(arc.curve[i + 2]));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(
      QPen(colour, fired ? thick : 1, diagram_->arcs[n].weak ? Qt::DashLine : Qt::SolidLine));
  painter.drawPath(path);
  const QPointF end = point(arc.curve.back()), tip = point(arc.tip);
  const QPointF along = tip - end, across(-along.y() * 0.4, along.x() * 0.4);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawPolygon(QPolygonF({tip, end + across, end - across}));
}

/// Once all arcs are drawn, so that none goes over a label.
void DiagramView::draw_label(QPainter& painter, size_t n) const {
  const DiagramLayout::Arc& arc = layout_.arcs[n];
  if (arc.curve.empty()) return;
  const ScopeLook& look = ScopeLook::current();
  const bool fired = lit(light_.fired, n);
  QFont text = font();
  text.setBold(fired);
  text.setUnderline(lit(light_.triggered, n));
  painter.setPen(fired ? look.one : look.text);
  draw_lines(painter, point(arc.label), arc.lines, text, look.pane);
}

void DiagramView::draw_node(QPainter& painter, size_t n) const {
  const DiagramLayout::Node& node = layout_.nodes[n];
  const Diagram::Shape shape = diagram_->nodes[n].shape;
  const ScopeLook& look = ScopeLook::current();
  const bool here = lit(light_.is, n);
  const QRectF room(node.centre.x - node.width / 2, node.centre.y - node.height / 2, node.width,
                    node.height);
  painter.setPen(QPen(look.text, lit(light_.next, n) ? thick : 1));
  painter.setBrush(here ? look.one_fill : look.pane);
  const bool round = shape == Diagram::Shape::state || shape == Diagram::Shape::final_state;
  round ? painter.drawEllipse(room) : painter.drawRect(room);
  if (shape == Diagram::Shape::final_state) painter.drawEllipse(room.adjusted(4, 4, -4, -4));
  QFont text = font();
  text.setBold(here);
  // The room is that of the plain letters.
  double widest = 1;
  for (const std::string& line : node.lines)
    widest = std::max(widest, QFontMetricsF(text).horizontalAdvance(QString::fromStdString(line)));
  const double fits = (node.width - 4) / widest;
  if (fits < 1) text.setPixelSize(std::max(1, static_cast<int>(text.pixelSize() * fits)));
  painter.setPen(look.text);
  draw_lines(painter, room.center(), node.lines, text);
}

void DiagramView::paintEvent(QPaintEvent*) {
  if (diagram_ == nullptr) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), ScopeLook::current().pane);
  const double points = scale_ * ScopeLook::px(100) / 100;
  painter.scale(points, points);
  for (size_t n = 0; n < layout_.arcs.size(); ++n) draw_arc(painter, n);
  for (size_t n = 0; n < layout_.arcs.size(); ++n) draw_label(painter, n);
  for (size_t n = 0; n < layout_.nodes.size(); ++n) draw_node(painter, n);
}

void DiagramView::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) return QWidget::wheelEvent(event);
  zoom(event->angleDelta().y() > 0 ? 1.25 : 0.8);
  event->accept();
}

}  // namespace kiva

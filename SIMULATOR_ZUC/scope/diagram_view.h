#pragma once

#include <QWidget>

#include "engine/drawing/layout.h"

namespace kiva {

/// A drawn diagram, lit as an instant is: the state that is here filled, the next one with a thick
/// edge, what fired thick and coloured, triggers that hold underlined.
class DiagramView : public QWidget {
  Q_OBJECT

 public:
  explicit DiagramView(QWidget* parent = nullptr);
  /// The diagram must stay as it is while it is shown; null for none.
  void show_diagram(const Diagram* diagram);
  void light(const DiagramLight& light);
  /// Larger or smaller by that factor, between a quarter and four times its own size.
  void zoom(double factor);
  double scale() const { return scale_; }
  /// What is lit, in words.
  QString told() const;
  /// As it is shown, in the colours of print.
  std::string svg() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void draw_node(QPainter& painter, size_t n) const;
  void draw_arc(QPainter& painter, size_t n) const;
  void draw_label(QPainter& painter, size_t n) const;
  void draw_lines(QPainter& painter, QPointF centre, const std::vector<std::string>& lines,
                  const QFont& font, const QColor& ground = {}) const;
  QFont font() const;
  void fit();

  const Diagram* diagram_ = nullptr;
  DiagramLayout layout_;
  DiagramLight light_;
  double scale_ = 1;
};

}  // namespace kiva

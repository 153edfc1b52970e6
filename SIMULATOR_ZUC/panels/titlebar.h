#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

namespace kiva {

/// The title bar of a dock, its parent: a title and a close button that answers while the pointer
/// holds it. A mouse event that the bar ignores passes on to the dock, which is how a dock is
/// dragged by its bar.
class TitleBar : public QWidget {
  Q_OBJECT

 public:
  explicit TitleBar(QWidget* parent = nullptr);

  /// Takes the scale of WindowLook.
  void look_changed();
  void setTitleText(const QString& text);
  const QString& titleText() const { return titleTxt; }

  QSize sizeHint() const override { return minimumSizeHint(); }
  /// Width of the close button by height of the bar, transposed in a dock with vertical title bar.
  /// The width is 0 until the bar has been painted once.
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

  QPixmap centerPm;
  QPixmap rightPm;
  QString titleTxt;
  bool bpress = false;     ///< the pointer holds the close button down
  bool but_press = false;  ///< a mouse button went down on the bar and is still down

 private:
  void create_pixmap();
  void draw_close_btn();
  /// Where a press or a release means the close button.
  bool in_close_zone(const QPoint& at) const;
  /// Where a move with a button held presses the close button.
  bool in_hover_zone(const QPoint& at) const;
};

}  // namespace kiva

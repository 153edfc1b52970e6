#pragma once

#include <QWidget>

namespace kiva {

/// The banner behind the tool buttons.
class Header : public QWidget {
  Q_OBJECT

 public:
  explicit Header(QWidget* parent = nullptr);
  /// Takes the scale of WindowLook.
  void look_changed();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kiva

#pragma once

#include <QLabel>

namespace kiva {

/// The module, and behind it its file where there is room; a module's name that is wider than the
/// label is cut in the middle and whole in the tip.
class ModuleLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ModuleLabel(QWidget* parent = nullptr) : QLabel(parent) {}
  void set_names(const QString& module, const QString& file);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont bold() const;

  QString module_, file_;
};

}  // namespace kiva

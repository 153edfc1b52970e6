#pragma once

#include <QDialog>

namespace kiva {

/// What the six panels share: a dialog that lives in a dock. Escape does not hide it, and Return
/// presses no button of it but the one that has the focus.
class Panel : public QDialog {
  Q_OBJECT

 public:
  Panel() : QDialog(nullptr) {}
  void reject() override {}

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace kiva

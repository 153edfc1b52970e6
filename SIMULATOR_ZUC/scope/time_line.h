#pragma once

#include <QWidget>

#include "SIMULATOR_ZUC/time_control.h"

namespace kiva {

/// The run and its branches: a bar each, from where it departs to its last instant. A click goes
/// there.
class TimeLine : public QWidget {
  Q_OBJECT

 public:
  explicit TimeLine(TimeControl* time, QWidget* parent = nullptr);
  /// What the branch is called: "main", or where it departs from which.
  static QString branch_name(const Recording& recording, size_t branch);
  QSize sizeHint() const override;
  /// Told and drawn anew.
  void follow();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  size_t first_branch() const;
  int x_of(long instant) const;
  long last() const;

  TimeControl* time_;
};

}  // namespace kiva

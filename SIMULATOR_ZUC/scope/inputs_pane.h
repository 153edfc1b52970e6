#pragma once

#include <QScrollArea>
#include <vector>

#include "SIMULATOR_ZUC/time_control.h"

class QGridLayout;
class QLineEdit;
class QPushButton;

namespace kiva {

/// The choices for the next instant: a row an input, a button a state, pulse or level, and an
/// editor where the input carries a value.
class InputsPane : public QScrollArea {
  Q_OBJECT

 public:
  explicit InputsPane(TimeControl* time, QWidget* parent = nullptr);
  /// The input goes to the next of the states that it can have.
  void step_input(int row);
  /// The input that was chosen last; -1 for none.
  int chosen() const { return chosen_; }
  void toggle_pulse(int row);
  int rows() const { return static_cast<int>(inputs_.size()); }
  void refresh();
  void look_changed();

 private:
  struct Input {
    std::vector<QPushButton*> states;  ///< by offered state
    QPushButton* pulse;
    QLineEdit* value;  ///< null for a pure signal
  };
  Input make_input(int row, QGridLayout* grid);

  TimeControl* time_;
  std::vector<SignalState> offered_;
  std::vector<Input> inputs_;
  int chosen_ = -1;
};

}  // namespace kiva

#pragma once

#include <QMainWindow>
#include <span>

#include "SIMULATOR_ZUC/scope/diagram_pane.h"
#include "SIMULATOR_ZUC/scope/inputs_pane.h"
#include "SIMULATOR_ZUC/scope/module_label.h"
#include "SIMULATOR_ZUC/scope/source_pane.h"
#include "SIMULATOR_ZUC/scope/time_line.h"
#include "SIMULATOR_ZUC/scope/wave_view.h"
#include "SIMULATOR_ZUC/scope/why_pane.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QSplitter;
class QToolButton;

namespace kiva {

/// The second window: one run seen from several sides. One instant is selected everywhere, here and
/// in the told window, and a click on any side moves all.
class ScopeWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// `file` is named in the title; the time must outlive the window.
  ScopeWindow(TimeControl* time, const QString& file);

  WaveView* waves() const { return waves_; }
  InputsPane* inputs() const { return inputs_; }
  WhyPane* why() const { return why_; }
  TimeLine* line() const { return line_; }
  SourcePane* source() const { return source_; }
  DiagramPane* diagram() const { return diagram_; }
  /// What is asked for in one line: an instant, a condition, a name.
  QLineEdit* prompt() const { return prompt_; }
  QString status() const;
  void go();
  /// Asks how many instants are to be run.
  void ask_run() { ask(Asked::instants); }

  /// A control: its key, what it does, and where it is pressed.
  struct Control {
    const char* key;
    const char* text;  ///< on its button; null for a key alone
    const char* tells;
    void (ScopeWindow::*act)();
  };
  static std::span<const Control> controls();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  enum class Asked { nothing, instant, condition, signal, mark, instants, property };

  QWidget* make_bar();
  QWidget* make_side();
  QWidget* make_panes();
  QWidget* framed(const QString& title, QWidget* pane);
  void make_keys();
  void connect_all();
  void refresh();
  void follow_scale();
  void dress();
  void tell(const QString& text);
  QString first_keys() const;

  void back();
  void forward();
  void first();
  void last();
  void change_before();
  void change_after();
  void ask_instant() { ask(Asked::instant); }
  void ask_until() { ask(Asked::condition); }
  void ask_signal() { ask(Asked::signal); }
  void ask_mark() { ask(Asked::mark); }
  void ask_property() { ask(Asked::property); }
  void prove_written();
  void prove(const QString& text);
  void next_branch();
  void run_or_stop();
  void pulse();
  void zoom_in() { waves_->zoom(1.25); }
  void zoom_out() { waves_->zoom(0.8); }
  void row_up() { waves_->move_chosen(-1); }
  void row_down() { waves_->move_chosen(1); }
  void toggle_made();
  void toggle_dark();
  void toggle_safe();
  void larger();
  void smaller();
  void told_size();
  void init();
  void export_dump();
  void export_diagram();
  void diagram_larger() { diagram_->zoom(1.25); }
  void diagram_smaller() { diagram_->zoom(0.8); }
  void save();
  void open();
  void show_keys();

  void ask(Asked what);
  void answered();
  void run_until(const QString& text);

  TimeControl* time_;
  QString file_;
  double scale_ = 1;  ///< of the size that the window has
  Asked asked_ = Asked::nothing;
  ModuleLabel* name_ = nullptr;
  QLabel *status_ = nullptr, *told_ = nullptr;
  QLineEdit* prompt_ = nullptr;
  QComboBox* branch_ = nullptr;
  QToolButton* run_button_ = nullptr;
  WaveView* waves_;
  InputsPane* inputs_;
  TimeLine* line_;
  SourcePane* source_;
  WhyPane* why_;
  DiagramPane* diagram_;
};

}  // namespace kiva

#pragma once

#include <QTabWidget>
#include <memory>
#include <vector>

#include "SIMULATOR_ZUC/scope/source_text.h"
#include "SIMULATOR_ZUC/time_control.h"
#include "engine/signal_names.h"

class QLabel;

namespace kiva {

/// The source text with what started, waits, ended and was killed in the shown instant, a tab for
/// each instance of a module. It shows the lines of the chosen signal, and offers the signals of
/// the line that is chosen in it.
class SourcePane : public QWidget {
  Q_OBJECT

 public:
  /// `module_file` is that of the compiled module, beside which the map lies.
  SourcePane(TimeControl* time, const QString& module_file, QWidget* parent = nullptr);
  bool has_source() const { return source_ != nullptr; }
  const LitSource* source() const { return source_.get(); }
  SourceText* text(int instance) const { return texts_[static_cast<size_t>(instance)]; }
  QTabWidget* tabs() const { return tabs_; }
  /// Marks the lines of that signal, in the tab that is shown or else in the first that has some.
  void show_signal(SignalPlace signal);
  /// The signals that the line of the shown tab names.
  std::vector<SignalPlace> signals_of_line(int line) const;
  /// The statement that goes on while this register is One, "sustain o" (line 7); empty for none.
  QString going_on(SignalPlace reg) const;
  /// A register and whether it is One.
  using CodeBit = std::pair<SignalPlace, bool>;
  /// The states of an automaton that fit these registers, "WASH or SPIN"; empty where no automaton
  /// has them all.
  QString states_with(const std::vector<CodeBit>& bits) const;
  void refresh();
  void look_changed();

 Q_SIGNALS:
  /// One of the signals of a line is wanted.
  void signal_wanted(SignalPlace signal);

 private:
  void load(const QString& module_file);
  void add_instance(size_t instance);
  SignalPlace as_local(SignalPlace signal) const;
  std::vector<int> lines_of(size_t instance, SignalPlace signal) const;
  void tell_line(int line);
  size_t shown() const { return static_cast<size_t>(tabs_->currentIndex()); }

  TimeControl* time_;
  SignalNames names_;
  std::unique_ptr<LitSource> source_;
  QTabWidget* tabs_ = nullptr;
  QLabel *note_ = nullptr, *legend_ = nullptr;
  QLabel* line_ = nullptr;  ///< the chosen line's signals
  std::vector<SourceText*> texts_;
  std::vector<SignalPlace> offered_;  ///< by link of `line_`
};

}  // namespace kiva

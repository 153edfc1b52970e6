#pragma once

#include <QTreeWidget>

#include "SIMULATOR_ZUC/scope/source_pane.h"
#include "SIMULATOR_ZUC/time_control.h"
#include "engine/why.h"

namespace kiva {

/// Why a signal is what it is in the shown instant: sentences that unfold, each with the instant
/// that one can go to, and the smallest change that would make it otherwise, as a branch to try.
class WhyPane : public QTreeWidget {
  Q_OBJECT

 public:
  /// `source` tells what registers are, where the module has one.
  WhyPane(TimeControl* time, const SourcePane* source, QWidget* parent = nullptr);
  void ask(SignalPlace signal);
  void ask_again();
  /// The sentences as text, a line each, indented by depth; for tests.
  QString sentences() const;

 protected:
  /// The arrows and Return are the tree's own while it has the focus.
  bool event(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fill(QTreeWidgetItem* parent, SignalPlace signal, long instant);
  QTreeWidgetItem* add_cause(QTreeWidgetItem* parent, const Cause& cause, long instant);
  std::vector<Cause> add_states(QTreeWidgetItem* parent, const std::vector<Cause>& causes,
                                long instant);
  void add_since(QTreeWidgetItem* item, long since);
  long since(SignalPlace reg, long instant);
  SignalPlace register_of(const Cause& cause) const;
  void offer_changes(SignalPlace signal, long instant, const std::vector<Cause>& causes);
  void unfold(QTreeWidgetItem* item);
  void follow_link(QTreeWidgetItem* item);

  TimeControl* time_;
  const SourcePane* source_;
  Reasons reasons_;
  SignalNames names_;
  Simulation trial_;  ///< runs what might have been
  SignalPlace signal_{};
  bool asked_ = false;
};

}  // namespace kiva

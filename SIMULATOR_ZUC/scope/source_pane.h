#pragma once

#include <QTabWidget>
#include <memory>
#include <vector>

#include "SIMULATOR_ZUC/time_control.h"
#include "engine/lit_source.h"

class QLabel;
class QPlainTextEdit;

namespace kiva {

/// The source text with what started, waits, ended and was killed in the shown instant, a tab for
/// each instance of a module.
class SourcePane : public QWidget {
  Q_OBJECT

 public:
  /// `module_file` is that of the compiled module, beside which the map lies.
  SourcePane(TimeControl* time, const QString& module_file, QWidget* parent = nullptr);
  bool has_source() const { return source_ != nullptr; }
  const LitSource* source() const { return source_.get(); }
  /// The editor of an instance.
  QPlainTextEdit* text(int instance) const { return texts_[static_cast<size_t>(instance)]; }
  void refresh();

 private:
  void load(const QString& module_file);
  void add_instance(size_t instance);

  TimeControl* time_;
  std::unique_ptr<LitSource> source_;
  QTabWidget* tabs_ = nullptr;
  QLabel* note_ = nullptr;
  QLabel* legend_ = nullptr;
  std::vector<QPlainTextEdit*> texts_;
};

}  // namespace kiva

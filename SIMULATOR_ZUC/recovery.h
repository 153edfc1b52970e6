#pragma once

#include <QLockFile>
#include <QObject>
#include <QTimer>
#include <memory>

namespace kiva {

class TimeControl;

/// Keeps the unsaved run of a module in a file of the user's state folder, so that a start of the
/// same module can take it up again where a process ended without its window being closed. Of two
/// processes on one module the first keeps its run.
class Recovery : public QObject {
  Q_OBJECT

 public:
  /// The time must outlive it. What the file holds from an earlier process stays until the first
  /// `keep`.
  Recovery(TimeControl* time, const QString& module_file, QObject* parent = nullptr);

  /// A run has been left behind.
  bool found() const;
  /// Runs it again; why it cannot be used, empty if it could.
  QString take_up();
  /// Writes what is unsaved; without any, there is no file.
  void keep();
  /// Nothing is to be taken up.
  void forget();
  const QString& file() const { return file_; }

 private:
  void keep_soon();

  TimeControl* time_;
  QString file_;
  std::unique_ptr<QLockFile> lock_;  ///< null where another process keeps its run
  QTimer soon_;
  int wait_;  ///< milliseconds from a change to its file
};

}  // namespace kiva

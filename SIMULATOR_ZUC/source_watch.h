#pragma once

#include <QFileSystemWatcher>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

namespace kiva {

/// A source text that is compiled, with a map, by `tarn` beside this program, and again whenever it
/// or another source text of its folder has been saved.
class SourceWatch : public QObject {
  Q_OBJECT

 public:
  explicit SourceWatch(const QString& source, QObject* parent = nullptr);
  ~SourceWatch() override;

  const QString& source() const { return source_; }
  /// Compiles, by a loop of events that takes no input until that is done; false where it was
  /// refused, for the reason that `told` gives.
  bool compile();
  /// The module that uses the others; "" before the first that could be compiled.
  const QString& module_file() const { return module_file_; }
  /// The compiler's first error, "" for none.
  const QString& told() const { return told_; }

 Q_SIGNALS:
  /// It has been saved and compiled again, or refused.
  void compiled();
  void refused();

 private:
  void start();
  void finished();
  void watch();
  void look();
  /// The source texts as they are on the disk.
  QString state() const;

  QString source_, module_file_, told_, seen_;
  QTemporaryDir folder_;
  int number_ = 0;  ///< of the compilation: each has a folder of its own
  QProcess compiler_;
  QFileSystemWatcher files_;
  QTimer soon_;
};

}  // namespace kiva

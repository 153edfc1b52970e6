#include "SIMULATOR_ZUC/source_watch.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QStandardPaths>

namespace kiva {

namespace {

constexpr int writing_time = 100;  // ms: an editor may write in several steps
constexpr int most_files = 200;

QString compiler() {
  const QString here =
      QStandardPaths::findExecutable("tarn", {QCoreApplication::applicationDirPath()});
  return here.isEmpty() ? "tarn" : here;
}

QFileInfoList sources_beside(const QString& source) {
  return QFileInfo(source)
      .absoluteDir()
      .entryInfoList({"*.zu"}, QDir::Files, QDir::Name)
      .mid(0, most_files);
}

}  // namespace

SourceWatch::SourceWatch(const QString& source, QObject* parent)
    : QObject(parent), source_(QFileInfo(source).absoluteFilePath()) {
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &SourceWatch::look);
  const auto changed = [this] { soon_.start(writing_time); };
  connect(&files_, &QFileSystemWatcher::fileChanged, this, changed);
  connect(&files_, &QFileSystemWatcher::directoryChanged, this, changed);
  connect(&compiler_, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
          &SourceWatch::finished);
  connect(&compiler_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) finished();
  });
}

SourceWatch::~SourceWatch() {
  compiler_.disconnect(this);
  compiler_.kill();
  compiler_.waitForFinished();
}

bool SourceWatch::compile() {
  QEventLoop loop;
  connect(this, &SourceWatch::compiled, &loop, [&loop] { loop.exit(1); });
  connect(this, &SourceWatch::refused, &loop, [&loop] { loop.exit(0); });
  start();
  return loop.exec(QEventLoop::ExcludeUserInputEvents) != 0;
}

void SourceWatch::start() {
  seen_ = state();
  watch();
  const QString folder = folder_.filePath(QString::number(++number_));
  QDir().mkpath(folder);
  compiler_.start(compiler(), {"--map", "-d", folder, source_});
}

void SourceWatch::finished() {
  const QStringList written =
      QString::fromLocal8Bit(compiler_.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
  const QString errors = QString::fromLocal8Bit(compiler_.readAllStandardError());
  const bool good = compiler_.error() != QProcess::FailedToStart && !written.isEmpty() &&
                    compiler_.exitStatus() == QProcess::NormalExit && compiler_.exitCode() == 0;
  told_.clear();
  if (good) {
    module_file_ = written.last();
    Q_EMIT compiled();
  } else {
    for (const QString& line : errors.split('\n'))
      if (told_.isEmpty() && line.contains(": error: ")) told_ = line;
    if (told_.isEmpty()) told_ = tr("%1: %2").arg(compiler_.program(), compiler_.errorString());
    Q_EMIT refused();
  }
  look();  // what has been saved meanwhile
}

/// A file that is written anew under its name has to be taken up again.
void SourceWatch::watch() {
  files_.addPath(QFileInfo(source_).absolutePath());
  for (const QFileInfo& file : sources_beside(source_)) files_.addPath(file.filePath());
}

void SourceWatch::look() {
  watch();
  if (compiler_.state() == QProcess::NotRunning && QFileInfo::exists(source_) && state() != seen_)
    start();
}

QString SourceWatch::state() const {
  QString all;
  for (const QFileInfo& file : sources_beside(source_))
    all += QString("%1 %2 %3\n")
               .arg(file.filePath())
               .arg(file.lastModified().toMSecsSinceEpoch())
               .arg(file.size());
  return all;
}

}  // namespace kiva

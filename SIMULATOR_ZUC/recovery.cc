#include "SIMULATOR_ZUC/recovery.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "SIMULATOR_ZUC/state_folder.h"
#include "SIMULATOR_ZUC/time_control.h"

namespace kiva {

namespace {

constexpr int shortest_wait = 2000;  // milliseconds
/// A long run is written less often: its file takes a twentieth of the time at most.
constexpr int wait_for_each = 20;

QString recovery_folder() {
  return state_folder() + "/recovery";
}

}  // namespace

Recovery::Recovery(TimeControl* time, const QString& module_file, QObject* parent)
    : QObject(parent), time_(time), wait_(shortest_wait) {
  const QFileInfo module(module_file);
  const QByteArray path = QFile::encodeName(module.absoluteFilePath());
  const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
  if (!QDir().mkpath(recovery_folder())) return;
  file_ = recovery_folder() + '/' + module.completeBaseName() + '-' +
          QString::fromLatin1(hash.left(16)) + ".kivasession";
  auto lock = std::make_unique<QLockFile>(file_ + ".lock");
  lock->setStaleLockTime(0);  // as long as its process lives
  if (!lock->tryLock(0)) return;
  lock_ = std::move(lock);
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &Recovery::keep);
  connect(time_, &TimeControl::moved, this, &Recovery::keep_soon);
  connect(time_, &TimeControl::marked, this, &Recovery::keep_soon);
}

bool Recovery::found() const {
  return lock_ != nullptr && QFile::exists(file_);
}

QString Recovery::take_up() {
  const QString problem = time_->open(file_);
  time_->set_saved(false);
  return problem;
}

void Recovery::keep_soon() {
  if (!soon_.isActive()) soon_.start(wait_);
}

void Recovery::keep() {
  if (lock_ == nullptr) return;
  if (time_->busy()) return keep_soon();
  if (!time_->unsaved()) return forget();
  QElapsedTimer clock;
  clock.start();
  time_->write_session(file_);
  wait_ = std::max(shortest_wait, static_cast<int>(clock.elapsed()) * wait_for_each);
}

void Recovery::forget() {
  soon_.stop();
  if (lock_ != nullptr) QFile::remove(file_);
}

}  // namespace kiva

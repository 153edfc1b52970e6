// Other modules: Open..., a dropped file, the recent ones. What fails leaves the module that runs.

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QSettings>
#include <QUrl>
#include <iostream>

#include "SIMULATOR_ZUC/dialogs.h"
#include "SIMULATOR_ZUC/fenetrepricipale.h"
#include "SIMULATOR_ZUC/recovery.h"
#include "SIMULATOR_ZUC/scope/scope_window.h"
#include "SIMULATOR_ZUC/state_folder.h"

namespace kiva {

namespace {

constexpr int most_recent = 8;
const char* const recent_key = "recent";

void remember(const QString& name) {
  QSettings settings(state_file(), QSettings::IniFormat);
  QStringList recent = settings.value(recent_key).toStringList();
  const QString path = QFileInfo(name).absoluteFilePath();
  recent.removeAll(path);
  recent.prepend(path);
  while (recent.size() > most_recent) recent.removeLast();
  settings.setValue(recent_key, recent);
}

/// The first dropped file; empty where none is.
QString dropped_file(const QMimeData* data) {
  for (const QUrl& url : data->urls())
    if (url.isLocalFile()) return url.toLocalFile();
  return {};
}

}  // namespace

bool FenPrincipale::open_file(const QString& name) {
  if ((time_ != nullptr && time_->busy()) || !may_leave_run()) return false;
  const std::string file = QFile::encodeName(name).toStdString();
  std::string instance;
  Module* module = nullptr;
  std::unique_ptr<Simulation> simulation;
  const bool read = guarded("open_file", [&] {
    module = parse(file, instance);
    if (module != nullptr) simulation = std::make_unique<Simulation>(module);
  });
  if (simulation == nullptr) {
    if (read) tell_of_failed_load();
    return false;
  }
  scope_.reset();
  if (recovery_ != nullptr) recovery_->forget();
  recovery_.reset();
  time_.reset();
  simulation_ = std::move(simulation);
  pautom = module;
  module_file_ = name;
  file_panel->lineEdit_4->setText(name);
  remember(name);
  afficherAll();
  return pautom != nullptr;
}

void FenPrincipale::ask_open() {
  const QString name = dialogs().ask_file(this, tr("Open"), tr("Compiled modules (*.zuc)"));
  if (!name.isEmpty()) open_file(name);
}

void FenPrincipale::fill_recent_menu() {
  recent_menu->clear();
  const QSettings settings(state_file(), QSettings::IniFormat);
  for (const QString& name : settings.value(recent_key).toStringList())
    recent_menu->addAction(name, this, [this, name] { open_file(name); });
  recent_menu->setEnabled(!recent_menu->isEmpty());
}

bool FenPrincipale::may_leave_run() {
  if (time_ == nullptr || !time_->unsaved()) return true;
  const QString module = QString::fromStdString(pautom->getName());
  switch (dialogs().ask_unsaved(
      this, tr("The run of %1 is not saved. Save it as a session?").arg(module))) {
    case Unsaved::cancel:
      return false;
    case Unsaved::discard:
      return true;
    case Unsaved::save:
      break;
  }
  const QString name =
      dialogs().ask_save(this, tr("Save"), tr("Sessions (*.kivasession);;Stimuli (*.stimuli)"));
  if (name.isEmpty()) return false;
  const QString problem = time_->save(name);
  if (!problem.isEmpty()) complain(problem.toStdString());
  return problem.isEmpty();
}

void FenPrincipale::offer_recovery() {
  if (recovery_ == nullptr || !recovery_->found()) return;
  const QString module = QString::fromStdString(pautom->getName());
  if (!dialogs().ask_whether(
          this, tr("The last run of %1 ended without being saved. Take it up again?").arg(module)))
    return recovery_->forget();
  const QString problem = recovery_->take_up();
  if (!problem.isEmpty()) complain(problem.toStdString());
}

// The scope goes with the window. A run that is under way ends first.
void FenPrincipale::closeEvent(QCloseEvent* event) {
  if (time_ != nullptr && time_->busy()) {
    connect(time_.get(), &TimeControl::run_ended, this, &QWidget::close, Qt::QueuedConnection);
    time_->stop();
    event->ignore();
    return;
  }
  if (!may_leave_run()) {
    event->ignore();
    return;
  }
  if (recovery_ != nullptr) recovery_->forget();
  if (scope_ != nullptr) scope_->close();
  event->accept();
}

void FenPrincipale::dragEnterEvent(QDragEnterEvent* event) {
  if (!dropped_file(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void FenPrincipale::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  open_file(dropped_file(event->mimeData()));
}

}  // namespace kiva

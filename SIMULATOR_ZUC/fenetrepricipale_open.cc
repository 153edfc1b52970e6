// Other modules: Open..., a dropped file, the recent ones, a source text that has been saved. What
// fails leaves the module that runs.

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
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
  if (name.endsWith(".zu")) return open_source(name);
  if (!show_module(name, name)) return false;
  watch_.reset();
  tell_of_source();
  return true;
}

/// The compiled module in place of the one that runs, by the name that a person knows it by.
bool FenPrincipale::show_module(const QString& module_file, const QString& name) {
  const std::string file = QFile::encodeName(module_file).toStdString();
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
  module_file_ = module_file;
  shown_name_ = name;
  file_panel->lineEdit_4->setText(name);
  remember(name);
  afficherAll();
  return pautom != nullptr;
}

// Source text.

bool FenPrincipale::open_source(const QString& name) {
  auto watch = std::make_unique<SourceWatch>(name);
  if (!watch->compile()) {
    complain(watch->told().toStdString());
    return false;
  }
  if (!show_module(watch->module_file(), name)) return false;
  watch_ = std::move(watch);
  connect(watch_.get(), &SourceWatch::compiled, this, &FenPrincipale::reload_source);
  connect(watch_.get(), &SourceWatch::refused, this, &FenPrincipale::tell_of_source);
  tell_of_source();
  return true;
}

/// The module as it has been saved, with the instants of the older one run again.
void FenPrincipale::reload_source() {
  if (watch_ == nullptr) return;
  if (time_ != nullptr && time_->busy()) {
    constexpr int again = 200;  // ms
    QTimer::singleShot(again, this, &FenPrincipale::reload_source);
    return;
  }
  const bool scope_open = scope_ != nullptr && scope_->isVisible();
  const QRect scope_place = scope_open ? scope_->geometry() : QRect();
  const Past past = time_ == nullptr ? Past() : time_->past();
  if (!show_module(watch_->module_file(), watch_->source())) return;
  tell_of_source();
  if (scope_open) {
    show_scope();
    scope_->setGeometry(scope_place);
  }
  time_->replay(past);
}

/// Under the window: why what has been saved does not run.
void FenPrincipale::tell_of_source() {
  const QString told = watch_ == nullptr ? QString() : watch_->told();
  if (!told.isEmpty()) std::cerr << told.toStdString() << std::endl;
  if (told.isEmpty() && findChild<QStatusBar*>() == nullptr) return;
  statusBar()->showMessage(told.section('/', -1));
  if (server_line_ == nullptr) statusBar()->setVisible(!told.isEmpty());
}

void FenPrincipale::ask_open() {
  const QString name = dialogs().ask_file(this, tr("Open"), tr("Modules (*.zu *.zuc)"));
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

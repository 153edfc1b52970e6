// Other modules: Open..., a dropped file, the recent ones. What fails leaves the module that runs.

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
#include "SIMULATOR_ZUC/scope/scope_window.h"

namespace kiva {

namespace {

constexpr int most_recent = 8;
const char* const recent_key = "recent";

void remember(const QString& name) {
  QSettings settings;
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
  if (time_ != nullptr && time_->busy()) return false;
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
  time_.reset();
  simulation_ = std::move(simulation);
  pautom = module;
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
  for (const QString& name : QSettings().value(recent_key).toStringList())
    recent_menu->addAction(name, this, [this, name] { open_file(name); });
  recent_menu->setEnabled(!recent_menu->isEmpty());
}

void FenPrincipale::dragEnterEvent(QDragEnterEvent* event) {
  if (!dropped_file(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void FenPrincipale::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  open_file(dropped_file(event->mimeData()));
}

}  // namespace kiva

#pragma once

#include <QObject>
#include <QString>

#include "SIMULATOR_ZUC/classic/plugininterface.h"

namespace kiva {

/// Finds and loads the plugins in the folder "plugins" of the working directory.
class PluginManager : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  /// Of the file loaded last; null until a plugin loads, and when that file offers none.
  PluginInterface* plugin = nullptr;

 public Q_SLOTS:
  /// Tries each plain file of the folder; none when there is no folder.
  void LoadAllPlugins();
  /// A file that is no library passes without a message and leaves `plugin` alone.
  void LoadPlugin(QString path);
};

}  // namespace kiva

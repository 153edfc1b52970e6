#include "SIMULATOR_ZUC/classic/pluginmanager.h"

#include <QDebug>
#include <QDir>
#include <QPluginLoader>

namespace kiva {

void PluginManager::LoadAllPlugins() {
  const QDir directory(QDir::currentPath() + "/plugins");
  qDebug() << "current path is :" << QDir::currentPath();
  qDebug() << "absolute path is :" << directory.absolutePath();
  for (const QString& name : directory.entryList(QDir::Files, QDir::NoSort)) {
    qDebug() << "file Name:" << name;
    LoadPlugin(directory.absolutePath() + "/" + name);
  }
}

void PluginManager::LoadPlugin(QString path) {
  qDebug() << "loading :" << path;
  QPluginLoader loader(path);
  QObject* instance = loader.instance();
  if (instance == nullptr) return;
  qDebug() << "pluging is loaded...";
  plugin = qobject_cast<PluginInterface*>(instance);
  if (plugin == nullptr) qDebug() << "Not a plugin :" << path << "=" << loader.errorString();
}

}  // namespace kiva

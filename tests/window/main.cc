#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "SIMULATOR_ZUC/ressource.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  kiva::register_resources();
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)  // always so since
  QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
  QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
  QApplication application(argc, argv);
  QStandardPaths::setTestModeEnabled(true);
  const QTemporaryDir state;
  qputenv("XDG_STATE_HOME", state.path().toUtf8());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QTemporaryDir().path());
  return RUN_ALL_TESTS();
}

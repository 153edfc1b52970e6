#include "SIMULATOR_ZUC/state_folder.h"

#include <QDir>

namespace kiva {

QString state_folder() {
  const QString set = qEnvironmentVariable("XDG_STATE_HOME");
  return (QDir::isAbsolutePath(set) ? set : QDir::homePath() + "/.local/state") + "/kiva";
}

QString state_file() {
  return state_folder() + "/window.ini";
}

}  // namespace kiva

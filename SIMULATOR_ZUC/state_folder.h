#pragma once

#include <QString>

namespace kiva {

/// The user's folder for what a window keeps of its life: runs, recent files, places. Settings that
/// somebody has chosen are QSettings'.
QString state_folder();
/// The file there for recent files and places, in the format of INI files.
QString state_file();

}  // namespace kiva

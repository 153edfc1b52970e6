#include "SIMULATOR_ZUC/ressource.h"

#include <QFile>
#include <QResource>

// The macro declares a function of the global namespace.
static void init_application_resources() {
  Q_INIT_RESOURCE(application);
#ifdef KIVA_TRANSLATIONS
  Q_INIT_RESOURCE(translations);
#endif
}

namespace kiva {

void register_resources() {
  init_application_resources();
}

QString stringFromResource(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return QString();
  return QString::fromUtf8(file.readAll());
}

}  // namespace kiva

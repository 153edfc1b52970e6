#pragma once

#include <string>

#include "SIMULATOR_ZUC/panels/panel.h"
#include "ui_filepanel.h"

namespace kiva {

/// The two buttons that ask for a file.
class FilePanel : public Panel, public Ui::Load_Form {
  Q_OBJECT

 public:
  FilePanel();

 Q_SIGNALS:
  void NewFile(QString name);

 private:
  std::string fichier;
};

}  // namespace kiva

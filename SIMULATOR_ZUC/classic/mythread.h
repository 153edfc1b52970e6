#pragma once

#include <QString>
#include <QThread>
#include <string>

namespace kiva {

class Module;

/// A thread that takes the name of a file. It has no work of its own.
class MyThread : public QThread {
  Q_OBJECT

 public:
  using QThread::QThread;
  void run() override {}

  bool Stop = false;
  std::string fname;

 Q_SIGNALS:
  void ModuleParsed(Module* module);

 public Q_SLOTS:
  void FileUploaded(QString name);
};

}  // namespace kiva

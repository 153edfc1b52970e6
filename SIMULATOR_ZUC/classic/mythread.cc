#include "SIMULATOR_ZUC/classic/mythread.h"

#include <iostream>

namespace kiva {

void MyThread::FileUploaded(QString name) {
  fname = name.toStdString();
  std::cout << "fname :" << fname << std::endl;
}

}  // namespace kiva

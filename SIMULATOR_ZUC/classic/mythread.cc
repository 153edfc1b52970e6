#include "SIMULATOR_ZUC/classic/mythread.h"

#include <iostream>

namespace kiva {

// NOLINTNEXTLINE(performance-unnecessary-value-param): a slot by its told signature
void MyThread::FileUploaded(QString name) {
  fname = name.toStdString();
  std::cout << "fname :" << fname << std::endl;
}

}  // namespace kiva

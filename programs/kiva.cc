#include "SIMULATOR_ZUC/application.h"

int main(int argc, char** argv) {
  return kiva::run_window(argc, argv);
}

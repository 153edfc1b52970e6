#include "SIMULATOR_ZUC/application.h"
#include "programs/report.h"
#include "tarn/session/session.h"

int main(int argc, char** argv) {
  return kiva::programs::run_reported("kiva", [&] {
    kiva::Session session;
    const kiva::Session::Use use(session);
    return kiva::run_window(argc, argv);
  });
}

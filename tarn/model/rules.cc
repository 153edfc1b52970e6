#include "tarn/model/rules.h"

#include "tarn/model/compilation.h"

namespace kiva {

Rules& Compilation::rules() {
  return Session::current().part<Rules>();
}

}  // namespace kiva

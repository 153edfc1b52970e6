#include "tarn/targets/frame/target_rules.h"

#include "tarn/model/compilation.h"

namespace kiva {

TargetRules& Compilation::target_rules() {
  return Session::current().part<TargetRules>();
}

}  // namespace kiva

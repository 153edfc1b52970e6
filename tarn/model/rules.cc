#include "tarn/model/rules.h"

#include "tarn/model/compilation.h"

namespace kiva {

Rules Compilation::rules = Rules::classic();

}  // namespace kiva

#include "tarn/session/arena.h"

namespace kiva {

void Arena::clear() {
  while (!kept_.empty()) {
    const Kept latest = kept_.back();
    kept_.pop_back();
    latest.destroy(latest.object);
  }
  kept_.shrink_to_fit();
}

}  // namespace kiva

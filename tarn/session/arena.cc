#include "tarn/session/arena.h"

#include <algorithm>

namespace kiva {

void Arena::forget(const void* object) {
  const auto at = std::find_if(early_.rbegin(), early_.rend(),
                               [object](const Kept& kept) { return kept.object == object; });
  if (at != early_.rend()) early_.erase(std::next(at).base());
}

void Arena::clear() {
  destroy(early_);
  destroy(kept_);
}

void Arena::destroy(std::vector<Kept>& objects) {
  while (!objects.empty()) {
    const Kept latest = objects.back();
    objects.pop_back();
    latest.destroy(latest.object);
  }
  objects.shrink_to_fit();
}

}  // namespace kiva

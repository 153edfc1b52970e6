#include "tarn/model/arena.h"

#include <vector>

namespace kiva::detail {

void keep_object(const void* object) {
  // Never destroyed: objects of the model may be used while statics go down.
  static auto* kept = new std::vector<const void*>;
  kept->push_back(object);
}

}  // namespace kiva::detail

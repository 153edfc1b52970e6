#pragma once

#include <utility>

namespace kiva {

namespace detail {
void keep_object(const void* object);
}  // namespace detail

/// Makes an object of the model that lives as long as the process. Signals, references, bindings
/// and expressions share each other freely and are released by nobody; the arena keeps them
/// reachable.
template <class T, class... Args>
T* make_kept(Args&&... args) {
  T* object = new T(std::forward<Args>(args)...);
  detail::keep_object(object);
  return object;
}

}  // namespace kiva

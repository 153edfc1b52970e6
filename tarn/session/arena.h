#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace kiva {

/// Owns objects of any type, which share each other freely and are released by nobody.
class Arena {
 public:
  Arena() = default;
  ~Arena() { clear(); }
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  template <class T, class... Args>
  T* make(Args&&... args) {
    T* object = new T(std::forward<Args>(args)...);
    kept_.push_back({object, [](void* kept) { delete static_cast<T*>(kept); }});
    return object;
  }
  /// Destroys all objects, the latest first. A destructor must not follow a pointer to another
  /// object of the arena.
  void clear();
  size_t size() const { return kept_.size(); }

 private:
  struct Kept {
    void* object;
    void (*destroy)(void*);
  };
  std::vector<Kept> kept_;
};

}  // namespace kiva

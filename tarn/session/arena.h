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
    const Kept kept{object, [](void* kept) { delete static_cast<T*>(kept); }};
    if constexpr (requires { T::may_end_early; }) {
      early_.push_back(kept);
    } else {
      kept_.push_back(kept);
    }
    return object;
  }
  /// Leaves the end of an object, whose class says `may_end_early`, to others. Nothing for one that
  /// is not kept here.
  void forget(const void* object);
  /// Destroys all objects, those that may end early before the others, the latest first. A
  /// destructor must not follow a pointer to another object of the arena.
  void clear();
  size_t size() const { return kept_.size() + early_.size(); }

 private:
  struct Kept {
    void* object;
    void (*destroy)(void*);
  };
  static void destroy(std::vector<Kept>& objects);

  std::vector<Kept> kept_;
  std::vector<Kept> early_;
};

}  // namespace kiva

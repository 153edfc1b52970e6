#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace kiva {

/// The values that the actions of a generated parser make, for its stack holds plain pointers. What
/// no action has taken goes with this object, whatever ends the parse.
class ParseValues {
 public:
  ParseValues() = default;
  ~ParseValues() {
    for (const Held& held : held_) held.drop(held.value);
  }
  ParseValues(const ParseValues&) = delete;
  ParseValues& operator=(const ParseValues&) = delete;

  template <class T, class... Arguments>
  T* make(Arguments&&... arguments) {
    std::unique_ptr<T> value(new T{std::forward<Arguments>(arguments)...});
    held_.push_back({value.get(), [](void* held) { delete static_cast<T*>(held); }});
    return value.release();
  }
  /// Hands a value (may be null) over; the latest are found first.
  template <class T>
  [[nodiscard]] std::unique_ptr<T> take(T* value) {
    if (value == nullptr) return nullptr;
    const auto is = [&](const Held& held) { return held.value == value; };
    held_.erase(std::next(std::find_if(held_.rbegin(), held_.rend(), is)).base());
    return std::unique_ptr<T>(value);
  }

 private:
  struct Held {
    void* value;
    void (*drop)(void*);
  };
  std::vector<Held> held_;
};

}  // namespace kiva

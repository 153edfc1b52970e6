#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace kiva {

/// JSON written straight into text, a value a line; memory that runs out on the way is an ordinary
/// exception, which the tree of a JSON library does not survive.
class JsonText {
 public:
  /// Begins an object, an array; as the member of that name where one is given.
  void open_object(std::string_view name = {}) { open(name, '{'); }
  void open_array(std::string_view name = {}) { open(name, '['); }
  /// Ends what was begun last.
  void close();
  void put(std::string_view name, const std::string& value) { put_raw(name, quoted(value)); }
  void put(std::string_view name, const std::vector<std::string>& values);
  void put(std::string_view name, int value) { put_raw(name, std::to_string(value)); }
  void put(std::string_view name, double value);
  void put(std::string_view name, bool value) { put_raw(name, value ? "true" : "false"); }
  void put_null(std::string_view name) { put_raw(name, "null"); }
  /// Values of an array have no name.
  template <class T>
  void add(const T& value) {
    put({}, value);
  }
  const std::string& text() const { return text_; }

  /// A JSON string; bytes that are no UTF-8 are replaced.
  static std::string quoted(const std::string& text);

 private:
  void open(std::string_view name, char bracket);
  void put_raw(std::string_view name, std::string_view value);

  std::string text_;
  std::string open_;  ///< the brackets that are to come, the innermost last
  bool any_ = false;  ///< in the innermost
};

}  // namespace kiva

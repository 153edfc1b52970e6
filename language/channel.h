#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace kiva::language {

/// Messages with a head "Content-Length: N" over two file descriptors, as editors send them. What
/// is no message is passed over up to the next head.
class Channel {
 public:
  Channel(int in, int out) : in_(in), out_(out) {}

  /// The next message; discarded (`is_discarded`) where its body is no JSON; none at the end.
  std::optional<nlohmann::json> read();
  /// Whether something has come that has not been read.
  bool pending();
  void write(const nlohmann::json& message) const;

 private:
  bool fill();
  std::optional<size_t> read_head();

  int in_, out_;
  std::string buffer_;
};

}  // namespace kiva::language

#include "language/channel.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

namespace kiva::language {

namespace {

constexpr std::string_view head = "Content-Length:";
constexpr size_t longest = size_t{1} << 28;

}  // namespace

bool Channel::fill() {
  std::array<char, 65536> some;
  ssize_t count = 0;
  do count = ::read(in_, some.data(), some.size());
  while (count < 0 && errno == EINTR);
  if (count <= 0) return false;
  buffer_.append(some.data(), static_cast<size_t>(count));
  return true;
}

bool Channel::pending() {
  pollfd wait{in_, POLLIN, 0};
  return !buffer_.empty() || poll(&wait, 1, 0) > 0;
}

/// The length of the next body, at whose first byte the buffer then begins.
std::optional<size_t> Channel::read_head() {
  for (;;) {
    const size_t begin = buffer_.find(head);
    const size_t end = begin == std::string::npos ? begin : buffer_.find("\n\r\n", begin);
    const size_t bare = begin == std::string::npos ? begin : buffer_.find("\n\n", begin);
    if (end != std::string::npos || bare != std::string::npos) {
      const std::string number = buffer_.substr(begin + head.size(), 20);
      buffer_.erase(0, std::min(end == std::string::npos ? end : end + 3,
                                bare == std::string::npos ? bare : bare + 2));
      char* stop = nullptr;
      const unsigned long length = std::strtoul(number.c_str(), &stop, 10);
      const bool good = stop != number.c_str() && number.find('-') == std::string::npos;
      if (good && length <= longest) return length;
      continue;
    }
    // Nothing before a head is worth keeping but what may be its beginning.
    if (begin == std::string::npos && buffer_.size() > head.size())
      buffer_.erase(0, buffer_.size() - head.size());
    if (!fill()) return {};
  }
}

std::optional<nlohmann::json> Channel::read() {
  const std::optional<size_t> length = read_head();
  if (!length) return {};
  while (buffer_.size() < *length)
    if (!fill()) return {};
  const std::string body = buffer_.substr(0, *length);
  buffer_.erase(0, *length);
  return nlohmann::json::parse(body, nullptr, false);
}

void Channel::write(const nlohmann::json& message) const {
  const std::string body = message.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  const std::string all = std::string(head) + ' ' + std::to_string(body.size()) + "\r\n\r\n" + body;
  for (size_t at = 0; at < all.size();) {
    const ssize_t count = ::write(out_, all.data() + at, all.size() - at);
    if (count < 0 && errno != EINTR) return;
    if (count > 0) at += static_cast<size_t>(count);
  }
}

}  // namespace kiva::language

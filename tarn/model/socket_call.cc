#include <array>
#include <iostream>

#include "base/printable_text.h"
#include "base/sock.h"
#include "tarn/model/compilation.h"
#include "tarn/session/diagnostic.h"
#include "tarn/session/session.h"

namespace kiva {

std::string Compilation::Socket_call(const std::string& message, Sock socket) {
  if (socket == nullptr) return "";
  const auto sent = SOCK_write(socket, message.data(), static_cast<int>(message.size()));
  std::cerr << "Socket_call buffer: " << printable(message) << '\n';
  if (sent == 0) return "";
  constexpr int most = 1023;
  std::array<char, most + 1> reply{};
  const auto received = SOCK_read(socket, reply.data(), most);
  if (received == 0) told_text() << "connexion stopped by client \n";
  if (received <= 0) return "";
  if (received == most)
    remark(Severity::warning, "a reply of 1023 bytes or more to the request: " + message,
           "Warning: reply of 1023 bytes or more to request: " + printable(message) +
               ": what is beyond is lost or taken for the next reply");
  return std::string(reply.data(), static_cast<size_t>(received));
}

}  // namespace kiva

#include "tests/server/fake_server.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace kiva::test {

namespace {

/// A listening socket on 127.0.0.1, and its port.
int listen_locally(unsigned short& port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  if (fd < 0 || bind(fd, generic, size) != 0 || listen(fd, 1) != 0 ||
      getsockname(fd, generic, &size) != 0)
    throw std::runtime_error("no local socket");
  port = ntohs(address.sin_port);
  return fd;
}

}  // namespace

FakeServer::FakeServer(Answer answer) : answer_(std::move(answer)) {
  listening_ = listen_locally(port_);
  thread_ = std::thread([this] { serve(); });
}

Sock FakeServer::client() {
  if (client_ == nullptr) client_ = SOCK_make_client("127.0.0.1", port_);
  if (client_ == nullptr) throw std::runtime_error("no connection to the server");
  return client_;
}

void FakeServer::say(const std::string& text) {
  send(connection_, text.data(), text.size(), MSG_NOSIGNAL);
}

FakeServer::~FakeServer() {
  SOCK_shutdown(client_, 1);
  shutdown(listening_, SHUT_RDWR);  // where nobody has come
  shutdown(connection_, SHUT_RDWR);
  thread_.join();
  close(listening_);
}

std::vector<std::string> FakeServer::take_requests() {
  const std::lock_guard lock(mutex_);
  return std::exchange(requests_, {});
}

void FakeServer::serve() {
  for (int connection; (connection = accept(listening_, nullptr, nullptr)) >= 0;) serve(connection);
}

void FakeServer::serve(int connection) {
  connection_ = connection;
  std::string buffer(1 << 16, '\0');
  ssize_t received;
  while ((received = recv(connection, buffer.data(), buffer.size(), 0)) > 0) {
    const std::string request = buffer.substr(0, static_cast<size_t>(received));
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(request);
    }
    const std::optional<std::string> reply = answer_(request);
    if (!reply) break;
    send(connection, reply->data(), reply->size(), MSG_NOSIGNAL);
  }
  connection_ = -1;
  close(connection);
}

}  // namespace kiva::test

// States: closed -> (open) waiting -> connected -> (ask) waiting -> connected; a fault leads from
// everywhere to lost, from where only `open` leads on. All waiting is done in `await`, on
// descriptors that do not block; a name is looked up in a thread of its own, since that call does.

#include "base/connection.h"

#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <memory>
#include <system_error>
#include <thread>

#include "base/printable_text.h"

namespace kiva {

namespace {

using std::chrono::steady_clock;

constexpr size_t longest_reply = 1 << 20;
constexpr size_t longest_told = 80;

Connection::Ready poll_descriptor(int descriptor, short events, Connection::Milliseconds most) {
  const auto end = steady_clock::now() + most;
  for (;;) {
    const auto left = std::chrono::ceil<Connection::Milliseconds>(end - steady_clock::now());
    pollfd one{descriptor, events, 0};
    const int count = poll(&one, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
    if (count > 0) return Connection::Ready::yes;
    if (count == 0) return Connection::Ready::late;
    if (errno != EINTR) return Connection::Ready::cancelled;
  }
}

std::string reason(int error) {
  return std::generic_category().message(error);
}

/// A look-up that its asker may leave behind.
struct LookUp {
  std::string host;
  int done = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  std::atomic<bool> found = false;  ///< and with it the address: the event's number orders nothing
  sockaddr_in address{};

  ~LookUp() { ::close(done); }

  void run() {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    if (getaddrinfo(host.c_str(), nullptr, &hints, &list) == 0 && list != nullptr) {
      std::memcpy(&address, list->ai_addr, sizeof address);
      found = true;
    }
    if (list != nullptr) freeaddrinfo(list);
    eventfd_write(done, 1);
  }
};

}  // namespace

Connection::Connection(std::string host, unsigned short port, Milliseconds time_out)
    : host_(std::move(host)), port_(port), time_out_(time_out), wait_(poll_descriptor) {}

Connection::~Connection() {
  close();
}

std::string Connection::name() const {
  return printable(host_) + ':' + std::to_string(port_);
}

void Connection::close() {
  SOCK_shutdown(sock_, 1);
  sock_ = nullptr;
  state_ = State::closed;
}

void Connection::fail(const std::string& what, const std::string& awaited) {
  close();
  state_ = State::lost;
  throw ConnectionFault("server " + name() + ": " + what + ", while " + awaited + " was awaited");
}

void Connection::await(int descriptor, short events, Deadline deadline,
                       const std::string& awaited) {
  state_ = State::waiting;
  const auto left = std::chrono::ceil<Milliseconds>(deadline - steady_clock::now());
  switch (wait_(descriptor, events, std::max(left, Milliseconds(0)))) {
    case Ready::yes:
      return;
    case Ready::cancelled:
      fail("given up", awaited);
    case Ready::late:
      const std::string time = std::to_string(static_cast<double>(time_out_.count()) / 1000);
      fail("nothing within " + time.substr(0, time.find_last_not_of("0.") + 1) + " s", awaited);
  }
}

void Connection::resolve(Deadline deadline, void* address) {
  const auto look_up = std::make_shared<LookUp>();
  look_up->host = host_;
  std::thread([look_up] { look_up->run(); }).detach();
  await(look_up->done, POLLIN, deadline, "its address");
  if (!look_up->found) fail("there is no such host", "its address");
  std::memcpy(address, &look_up->address, sizeof look_up->address);
}

void Connection::open() {
  const char* const awaited = "a connection";
  close();
  const Deadline deadline = steady_clock::now() + time_out_;
  sockaddr_in address{};
  resolve(deadline, &address);
  address.sin_port = htons(port_);
  sock_ = SOCK_of(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0), host_, port_);
  if (sock_->fd < 0) fail(reason(errno), awaited);
  int error = 0;
  if (connect(sock_->fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    if (errno != EINPROGRESS) fail(reason(errno), awaited);
    await(sock_->fd, POLLOUT, deadline, awaited);
    socklen_t size = sizeof error;
    getsockopt(sock_->fd, SOL_SOCKET, SO_ERROR, &error, &size);
  }
  if (error != 0) fail(reason(error), awaited);
  const int yes = 1;
  setsockopt(sock_->fd, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
  state_ = State::connected;
}

void Connection::check_silent(Milliseconds most) {
  const char* const awaited = "no more text";
  if (sock_ == nullptr) return;
  if (most.count() > 0 && poll_descriptor(sock_->fd, POLLIN, most) != Ready::yes) return;
  char byte = 0;
  const ssize_t count = recv(sock_->fd, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  if (count > 0) fail("text that belongs to no request", awaited);
  if (count < 0 && errno != EAGAIN && errno != EINTR) fail(reason(errno), awaited);
}

void Connection::check_there() {
  char byte = 0;
  if (sock_ != nullptr && recv(sock_->fd, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0)
    fail("the connection is closed", "nothing");
}

void Connection::send_all(const std::string& request, Deadline deadline,
                          const std::string& awaited) {
  for (size_t sent = 0; sent < request.size();) {
    const ssize_t count =
        send(sock_->fd, request.data() + sent, request.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count >= 0) {
      sent += static_cast<size_t>(count);
    } else if (errno == EAGAIN) {
      await(sock_->fd, POLLOUT, deadline, awaited);
    } else if (errno != EINTR) {
      fail(errno == EPIPE || errno == ECONNRESET ? "the connection is closed" : reason(errno),
           awaited);
    }
  }
}

std::string Connection::ask(const std::string& request) {
  const std::string told = printable(request);
  const std::string awaited =
      "the reply to \"" +
      (told.size() > longest_told ? told.substr(0, longest_told) + "..." : told) + '"';
  if (sock_ == nullptr) fail("there is no connection", awaited);
  check_silent();
  const Deadline deadline = steady_clock::now() + time_out_;
  send_all(request, deadline, awaited);
  std::string reply;
  for (;;) {
    // A reply in several writes would wait for our acknowledgement of the first.
    const int yes = 1;
    setsockopt(sock_->fd, IPPROTO_TCP, TCP_QUICKACK, &yes, sizeof yes);
    char block[1 << 12];
    const ssize_t count = recv(sock_->fd, block, sizeof block, MSG_DONTWAIT);
    if (count > 0) {
      reply.append(block, static_cast<size_t>(count));
      if (reply.size() > longest_reply) fail("a reply without end", awaited);
    } else if (!reply.empty()) {
      break;  // what came at once is the reply; that the server has left shows at the next request
    } else if (count == 0) {
      fail("the connection is closed", awaited);
    } else if (errno == EAGAIN) {
      await(sock_->fd, POLLIN, deadline, awaited);
    } else if (errno != EINTR) {
      fail(errno == ECONNRESET ? "the connection is closed" : reason(errno), awaited);
    }
  }
  state_ = State::connected;
  return reply;
}

}  // namespace kiva

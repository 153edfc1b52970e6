#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/sock.h"

namespace kiva::test {

/// An evaluation server in the test's own process, on a port of 127.0.0.1 that the system chose,
/// for one client after another. It keeps each request byte for byte, as one read gave it.
class FakeServer {
 public:
  /// The reply to a request; nothing to close the connection instead.
  using Answer = std::function<std::optional<std::string>(const std::string& request)>;

  explicit FakeServer(Answer answer);
  ~FakeServer();
  FakeServer(const FakeServer&) = delete;
  FakeServer& operator=(const FakeServer&) = delete;

  /// The simulator's end of the connection, made here unless another has come to the port.
  Sock client();
  unsigned short port() const { return port_; }
  /// Sends a text that answers nothing.
  void say(const std::string& text);
  /// The requests since the last call.
  std::vector<std::string> take_requests();

 private:
  void serve();
  void serve(int connection);

  Answer answer_;
  unsigned short port_ = 0;
  int listening_;
  std::atomic<int> connection_ = -1;
  Sock client_ = nullptr;
  std::mutex mutex_;
  std::vector<std::string> requests_;
  std::thread thread_;
};

}  // namespace kiva::test

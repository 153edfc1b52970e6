#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

#include "base/sock.h"

namespace kiva {

/// Why an exchange with a server did not come about: one sentence with host, port, and what was
/// awaited.
class ConnectionFault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A connection, by IPv4 and TCP, to a server that gives one reply of text to each request. The
/// protocol has no marks between replies, so what comes while none is awaited is a fault, and after
/// a fault of any kind nothing more is asked until it is opened again.
class Connection {
 public:
  using Milliseconds = std::chrono::milliseconds;
  enum class State { closed, waiting, connected, lost };
  enum class Ready { yes, late, cancelled };
  /// Waits until one of `events` (of poll(2)) has come for the descriptor, or the time is over.
  using Wait = std::function<Ready(int descriptor, short events, Milliseconds most)>;

  /// Not open yet. The time is for the connection and for each reply.
  Connection(std::string host, unsigned short port, Milliseconds time_out);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Connects, afresh where it was connected; throws ConnectionFault.
  void open();
  /// One exchange; throws ConnectionFault, and then the connection is lost.
  std::string ask(const std::string& request);
  /// Throws ConnectionFault where the server says something unasked, now or in that time.
  void check_silent(Milliseconds most = Milliseconds(0));
  /// Throws ConnectionFault where the server has left. What is there of a connection is this
  /// object's: no two threads call it at once, but for `state`.
  void check_there();
  void close();

  State state() const { return state_; }
  /// "HOST:PORT", for a person.
  std::string name() const;
  /// Null unless connected; owned here.
  Sock handle() const { return sock_; }
  /// In place of poll(2), by a program that has other things to do.
  void set_wait(Wait wait) { wait_ = std::move(wait); }

 private:
  using Deadline = std::chrono::steady_clock::time_point;

  [[noreturn]] void fail(const std::string& what, const std::string& awaited);
  void await(int descriptor, short events, Deadline deadline, const std::string& awaited);
  void resolve(Deadline deadline, void* address);
  void send_all(const std::string& request, Deadline deadline, const std::string& awaited);

  std::string host_;
  unsigned short port_;
  Milliseconds time_out_;
  Wait wait_;
  std::atomic<State> state_ = State::closed;
  Sock sock_ = nullptr;
};

}  // namespace kiva

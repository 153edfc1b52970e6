#include "tarn/session/session.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <iostream>

namespace kiva {

namespace {

thread_local Session* current_session = nullptr;

/// The session of a thread that chose none. That of the main thread is never destroyed: objects of
/// the model may be used while statics go down.
struct DefaultSession {
  Session* session = nullptr;
  ~DefaultSession() {
    if (gettid() != getpid()) delete session;
  }
};
thread_local DefaultSession default_session;

}  // namespace

std::string my_getenv(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? "./" : value;
}

Session::Session() : told_text_(&std::cout) {}

Session::~Session() {
  {
    const Use use(*this);
    ending_ = true;
    arena_.clear();
    while (!owned_.empty()) owned_.pop_back();
  }
  if (current_session == this) current_session = nullptr;
}

Session& Session::current() {
  if (current_session == nullptr) {
    if (default_session.session == nullptr) default_session.session = new Session;
    current_session = default_session.session;
  }
  return *current_session;
}

Session::Use::Use(Session& session) : before_(current_session) {
  current_session = &session;
}

Session::Use::~Use() {
  current_session = before_;
}

size_t Session::new_part_number() {
  static std::atomic<size_t> next = 0;
  return next++;
}

}  // namespace kiva

#pragma once

// One use of the compiler library: all that compilations and reads need, and all that they leave
// behind. Two sessions never see each other, whether they work by turns or in two threads.
//
// Invariants:
//  1. A thread has one current session at a time. `Use` chooses it and puts the former one back;
//     a thread that never chose has a default session of its own, which ends with the thread (that
//     of the main thread with the process).
//  2. All mutable state of the library that outlives a call is a session's: its options, counters,
//     parts and arena. What is written at namespace scope is constant, or belongs to a thread.
//  3. An object of the model belongs to the session that was current when it was made, is worked on
//     only while that one is current, and dies with it. A session works in one thread at a time.
//  4. The end of a session destroys the arena's objects, the latest first, then its parts, the
//  latest
//     first. Of the arena, modules go first and leave their woods to the equation tables: no
//     diagram dies before its last handle.

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <vector>

#include "tarn/session/arena.h"
#include "tarn/session/diagnostic.h"
#include "tarn/session/options.h"

namespace kiva {

class Session {
 public:
  Session();
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  static Session& current();

  /// Makes a session the current one of this thread while it lives.
  class Use {
   public:
    explicit Use(Session& session);
    ~Use();
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    Session* before_;
  };

  SessionOptions options;
  Counters counters;
  Arena& arena() { return arena_; }

  /// The session's one object of type T, built without arguments on first need. Each floor keeps
  /// what it has to remember in a part of its own.
  template <class T>
  T& part() {
    static const size_t number = new_part_number();
    if (number >= parts_.size()) parts_.resize(number + 1, nullptr);
    if (parts_[number] == nullptr) {
      auto made = std::make_shared<T>();
      owned_.push_back(made);
      parts_[number] = made.get();
    }
    return *static_cast<T*>(parts_[number]);
  }

  /// Where the library tells what it has to say to the standard output; that one unless chosen.
  std::ostream& told_text() const { return *told_text_; }
  void set_told_text(std::ostream& out) { told_text_ = &out; }

  /// What takes the session's diagnostics; null (the default) leaves them to told texts and ends.
  DiagnosticSink* sink() const { return sink_; }
  void set_sink(DiagnosticSink* sink) { sink_ = sink; }
  /// Where the last complaint belongs that named a place of its own.
  Place told_place;

  /// The end has begun: what an object points to may be gone.
  bool ending() const { return ending_; }

 private:
  static size_t new_part_number();

  Arena arena_;
  std::vector<std::shared_ptr<void>> owned_;  ///< parts in order of arrival
  std::vector<void*> parts_;                  ///< by number of the type
  std::ostream* told_text_;
  DiagnosticSink* sink_ = nullptr;
  bool ending_ = false;
};

/// Where the current session tells what the library has to say to the standard output.
inline std::ostream& told_text() {
  return Session::current().told_text();
}

/// Makes an object of the model that lives as long as the current session.
template <class T, class... Args>
T* make_kept(Args&&... args) {
  return Session::current().arena().make<T>(std::forward<Args>(args)...);
}

}  // namespace kiva

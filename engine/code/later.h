#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <memory>
#include <thread>

namespace kiva::code {

/// Machine code of equations that are run again and again. It is made beside the runs, in a thread
/// of its own, once enough has been run: what runs for a moment only, and the first instants of
/// all, never wait for it.
template <class Made>
class Later {
 public:
  Later() = default;
  Later(const Later&) = delete;
  Later& operator=(const Later&) = delete;

  /// Null as long as there is none.
  Made* ready() const { return ready_.load(std::memory_order_acquire); }

  /// So many equations have been run by other means. `make` gives a pointer, null for none; it is
  /// called at most once, and what it reads must stay as it is as long as this lives.
  template <class Make>
  void count(long equations, const Make& make) {
    run_ += static_cast<std::uint64_t>(equations);
    if (begun_ || run_ < enough) return;
    begun_ = true;
    try {
      maker_ = std::jthread([this, make] {
        try {
          keep(make());
        } catch (const std::exception&) {
          // The other means do.
        }
      });
    } catch (const std::exception&) {
      // No thread: the other means do.
    }
  }

  /// Makes it now; false where there is none.
  template <class Make>
  bool make_now(const Make& make) {
    begun_ = true;
    if (maker_.joinable()) maker_.join();
    if (made_ == nullptr) keep(make());
    return made_ != nullptr;
  }

 private:
  /// A few hundredths of a second by tables.
  static constexpr std::uint64_t enough = 20'000'000;
  void keep(std::unique_ptr<Made> made) {
    made_ = std::move(made);
    ready_.store(made_.get(), std::memory_order_release);
  }

  std::uint64_t run_ = 0;
  bool begun_ = false;
  std::unique_ptr<Made> made_;
  std::atomic<Made*> ready_{nullptr};
  std::jthread maker_;  ///< ends before what it writes to
};

}  // namespace kiva::code

// rename(2) within a folder is atomic; the sync before it sees to it that the name never stands for
// less than the whole text, whatever ends the machine.

#include "base/whole_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <climits>
#include <csignal>
#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

namespace kiva {

namespace {

bool synced(const std::string& path) {
  const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool good = fsync(descriptor) == 0;
  return close(descriptor) == 0 && good;
}

// What a signal's handler may look at: names in places that never move, each of them whole while
// its flag is up. A name that is too long, or one too many, stays behind after an interrupt.
constexpr int most_unfinished = 16;
char unfinished_names[most_unfinished][PATH_MAX];
std::atomic<bool> unfinished_taken[most_unfinished];
std::atomic<bool> unfinished[most_unfinished];

extern "C" void end_by_signal(int number) {
  remove_unfinished_files();
  signal(number, SIG_DFL);
  raise(number);
}

std::atomic<bool> handles_interrupts;

/// Only where nobody else has an answer to the signal.
void handle_interrupts() {
  for (int number : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
    action.sa_handler = end_by_signal;
    sigaction(number, &action, nullptr);
  }
}

int enter_unfinished(const std::string& path) {
  if (handles_interrupts) handle_interrupts();
  if (path.size() >= PATH_MAX) return -1;
  for (int slot = 0; slot < most_unfinished; ++slot) {
    if (unfinished_taken[slot].exchange(true)) continue;
    std::memcpy(unfinished_names[slot], path.c_str(), path.size() + 1);
    unfinished[slot] = true;
    return slot;
  }
  return -1;
}

void leave_unfinished(int slot) {
  if (slot < 0) return;
  unfinished[slot] = false;
  unfinished_taken[slot] = false;
}

std::string temporary_beside(const std::string& path) {
  static std::atomic<unsigned> number = 0;
  return path + "." + std::to_string(getpid()) + "-" + std::to_string(++number) + ".part";
}

}  // namespace

// The delegation lets the destructor clean up after a constructor that runs out of memory.
WholeFile::WholeFile(const std::string& path) : WholeFile() {
  path_ = path;
  std::error_code none;
  if (fs::is_symlink(path_, none)) {
    const fs::path target = fs::canonical(path_, none);
    if (!none) path_ = target.string();
  }
  const fs::file_status there = fs::status(path_, none);
  if (!fs::exists(there) || fs::is_regular_file(there)) {
    // A file that its owner has protected stays as it is, though a rename could replace it.
    if (fs::exists(there) && access(path_.c_str(), W_OK) != 0) return;
    temporary_ = temporary_beside(path_);
    slot_ = enter_unfinished(temporary_);
  }
  out_.open(temporary_.empty() ? path_ : temporary_, std::ios::binary);
  if (out_.is_open() && !temporary_.empty() && fs::exists(there))
    fs::permissions(temporary_, there.permissions(), none);
}

WholeFile::~WholeFile() {
  if (temporary_.empty()) return;
  out_.close();
  unlink(temporary_.c_str());
  forget_temporary();
}

void WholeFile::forget_temporary() {
  leave_unfinished(slot_);
  slot_ = -1;
  temporary_.clear();
}

bool WholeFile::finish(Sync sync) {
  if (!out_.is_open()) return false;
  out_.close();
  if (!out_) return false;
  if (temporary_.empty()) return true;
  if (sync == Sync::yes && !synced(temporary_)) return false;
  if (rename(temporary_.c_str(), path_.c_str()) != 0) return false;
  forget_temporary();
  return true;
}

void remove_unfinished_files() noexcept {
  for (int slot = 0; slot < most_unfinished; ++slot)
    if (unfinished[slot]) unlink(unfinished_names[slot]);
}

void remove_unfinished_files_on_interrupt() {
  handles_interrupts = true;
}

}  // namespace kiva

// rename(2) within a folder is atomic; the sync before it sees to it that the name never stands for
// less than the whole text, whatever ends the machine.

#include "base/whole_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
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

std::string temporary_beside(const std::string& path) {
  static std::atomic<unsigned> number = 0;
  return path + "." + std::to_string(getpid()) + "-" + std::to_string(++number) + ".part";
}

}  // namespace

WholeFile::WholeFile(const std::string& path) : path_(path) {
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
  }
  out_.open(temporary_.empty() ? path_ : temporary_, std::ios::binary);
  if (out_.is_open() && !temporary_.empty() && fs::exists(there))
    fs::permissions(temporary_, there.permissions(), none);
}

WholeFile::~WholeFile() {
  if (temporary_.empty()) return;
  out_.close();
  unlink(temporary_.c_str());
}

bool WholeFile::finish() {
  if (!out_.is_open()) return false;
  out_.close();
  if (!out_) return false;
  if (temporary_.empty()) return true;
  if (!synced(temporary_) || rename(temporary_.c_str(), path_.c_str()) != 0) return false;
  temporary_.clear();
  return true;
}

}  // namespace kiva

#pragma once

#include <fstream>
#include <string>

namespace kiva {

/// A file that is written whole or not at all: its text goes to a temporary file beside it, which
/// takes the name when everything has been written and synced. Until then, and for good where
/// anything fails, what bore the name stands as it was. A name that is a link stands for what it
/// leads to; what is no plain file (a terminal, a pipe) is written to as it is.
class WholeFile {
 public:
  explicit WholeFile(const std::string& path);
  /// Without `finish` nothing has been written.
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// False where it cannot be written at all.
  [[nodiscard]] bool opened() const { return out_.is_open(); }
  std::ostream& out() { return out_; }
  /// What is cheap to make again may go without the wait for the disk.
  enum class Sync { yes, no };
  /// Gives the text its name; false, and the older file stands, where something failed.
  [[nodiscard]] bool finish(Sync sync = Sync::yes);

 private:
  WholeFile() = default;
  void forget_temporary();

  std::string path_;
  std::string temporary_;  ///< empty where the file is written to as it is
  int slot_ = -1;          ///< in the list that an interrupt works off
  std::ofstream out_;
};

/// Takes away the temporary files of this process, whatever it is doing; for one that ends at once.
void remove_unfinished_files() noexcept;

/// Lets an interrupt of the process (SIGINT, SIGTERM, SIGHUP) take the temporary files with it.
/// What the process ignores stays ignored.
void remove_unfinished_files_on_interrupt();

}  // namespace kiva

#pragma once

#include <sys/types.h>

#include <optional>
#include <set>
#include <string>
#include <utility>

#include "base/whole_file.h"

namespace kiva {

/// What the current session has read and how it treats files: a part of the session.
class SessionFiles {
 public:
  static SessionFiles& current();

  /// Where the traces of compiled modules' readers go: each beside its file unless chosen; null for
  /// nowhere.
  std::optional<std::ostream*> trace;
  /// Refuses to write onto what has been read here. The library's callers choose it.
  bool keep_read = false;

  /// Enters a file, by what it is and not by its name.
  void note_read(const std::string& path);
  /// Ends the work, with a diagnostic, where `keep_read` holds and the path is a file read here.
  void check_written(const std::string& path) const;

 private:
  std::set<std::pair<dev_t, ino_t>> read_;
};

/// The file that a session writes; see `SessionFiles::check_written`.
class SessionOutput : public WholeFile {
 public:
  explicit SessionOutput(const std::string& path) : WholeFile(checked(path)) {}

 private:
  static const std::string& checked(const std::string& path) {
    SessionFiles::current().check_written(path);
    return path;
  }
};

}  // namespace kiva

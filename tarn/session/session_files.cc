#include "tarn/session/session_files.h"

#include <sys/stat.h>

#include "tarn/session/session.h"

namespace kiva {

SessionFiles& SessionFiles::current() {
  return Session::current().part<SessionFiles>();
}

void SessionFiles::note_read(const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) == 0 && S_ISREG(file.st_mode))
    read_.emplace(file.st_dev, file.st_ino);
}

void SessionFiles::check_written(const std::string& path) const {
  struct stat file {};
  if (!keep_read || stat(path.c_str(), &file) != 0 || !read_.contains({file.st_dev, file.st_ino}))
    return;
  Diagnostic fault;
  fault.sentence = '"' + path + "\" is read here, and would be overwritten";
  fault.manner = Manner::untold;
  end_with(std::move(fault));
}

}  // namespace kiva

#pragma once

#include <filesystem>
#include <string>

namespace kiva::test {

/// A new empty folder, gone with the object.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string file(const std::string& name) const { return (path_ / name).string(); }
  /// Writes a file and gives its path.
  std::string write(const std::string& name, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

/// The whole of a file; "" when it cannot be read.
std::string read_text(const std::string& file);

}  // namespace kiva::test

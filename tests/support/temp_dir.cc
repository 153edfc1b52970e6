#include "tests/support/temp_dir.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace kiva::test {

TempDir::TempDir() {
  std::string name = (std::filesystem::temp_directory_path() / "kiva_test_XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder: " + name);
  path_ = name;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::write(const std::string& name, const std::string& text) const {
  const std::string path = file(name);
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

std::string read_text(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace kiva::test

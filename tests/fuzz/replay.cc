// Feeds files to a harness: each argument is a file, or a folder of files.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

#include "base/read_all.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  std::vector<fs::path> files;
  for (int i = 1; i < argc; ++i) {
    if (!fs::is_directory(argv[i])) files.emplace_back(argv[i]);
    if (fs::is_directory(argv[i]))
      for (const auto& entry : fs::directory_iterator(argv[i])) files.push_back(entry.path());
  }
  for (const fs::path& file : files) {
    std::ifstream in(file, std::ios::binary);
    const std::string text = kiva::read_all(in);
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(text.data()), text.size());
  }
  return files.empty() ? 1 : 0;
}

#include "language/folder.h"

#include <cctype>
#include <cstdlib>
#include <filesystem>

namespace kiva::language {

namespace {

namespace fs = std::filesystem;

constexpr size_t most_files = 300, most_entries = 20000;
constexpr std::string_view scheme = "file://";

template <class Iterator>
void add_sources(Iterator at, std::list<std::string>& files) {
  std::error_code error;
  size_t seen = 0;
  for (; at != Iterator() && files.size() < most_files && ++seen < most_entries;
       at.increment(error)) {
    if (at->path().extension() == ".zu" && at->is_regular_file(error))
      files.push_back(at->path().string());
    if constexpr (requires { at.disable_recursion_pending(); })
      if (at->path().filename().string().starts_with('.')) at.disable_recursion_pending();
    if (error) return;
  }
}

}  // namespace

std::list<std::string> source_files(const std::string& folder, bool deep) {
  std::list<std::string> files;
  std::error_code error;
  const auto options = fs::directory_options::skip_permission_denied;
  if (deep)
    add_sources(fs::recursive_directory_iterator(folder, options, error), files);
  else
    add_sources(fs::directory_iterator(folder, options, error), files);
  files.sort();
  return files;
}

std::string uri_of(const std::string& path) {
  if (!path.starts_with('/')) return path;
  std::string uri(scheme);
  for (const char c : path) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0 ||
        std::string_view("/-._~").find(c) != std::string_view::npos) {
      uri += c;
    } else {
      static constexpr char digits[] = "0123456789ABCDEF";
      const auto byte = static_cast<unsigned char>(c);
      uri += {'%', digits[byte >> 4], digits[byte & 15]};
    }
  }
  return uri;
}

std::string path_of(const std::string& uri) {
  if (!uri.starts_with(scheme)) return uri;
  std::string path;
  const size_t begin = uri.find('/', scheme.size());
  for (size_t at = begin; at < uri.size(); ++at) {
    const std::string hex = uri.substr(at + 1, 2);
    const bool coded = uri[at] == '%' && hex.size() == 2 &&
                       std::isxdigit(static_cast<unsigned char>(hex[0])) != 0 &&
                       std::isxdigit(static_cast<unsigned char>(hex[1])) != 0;
    path += coded ? static_cast<char>(std::strtol(hex.c_str(), nullptr, 16)) : uri[at];
    if (coded) at += 2;
  }
  return path;
}

}  // namespace kiva::language

#include "programs/tarn/lay_out_files.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "base/read_all.h"
#include "base/whole_file.h"
#include "language/layout.h"
#include "programs/tarn/messages.h"

namespace kiva::tarn_program {

namespace {

Place place_at(const std::string& file, const std::string& text, size_t at) {
  const std::string before = text.substr(0, at);
  const int line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  const int column = static_cast<int>(before.size() - (before.rfind('\n') + 1)) + 1;
  return {file, line, column, line, column};
}

/// False when something was wrong, which has been told.
bool write(const std::string& file, const std::string& text) {
  if (file == "-") return std::cout << text, true;
  // A link stays one.
  std::error_code error;
  WholeFile whole(std::filesystem::canonical(file, error).string());
  if (whole.opened()) whole.out() << text;
  return (whole.opened() && whole.finish()) || fail({file, 0, 0, 0, 0}, "cannot be written");
}

/// Whether the file could be read to its end; else that has been told.
bool read(const std::string& file, std::string& text) {
  const char* const torn = "cannot be read to its end";
  if (file == "-") {
    text = read_all(std::cin);
    return std::ferror(stdin) == 0 || fail({"<stdin>", 0, 0, 0, 0}, torn);
  }
  std::ifstream in(file, std::ios::binary);
  if (!in.is_open() || std::filesystem::is_directory(file))
    return fail({file, 0, 0, 0, 0}, "cannot be opened");
  text = read_all(in);
  return !in.bad() || fail({file, 0, 0, 0, 0}, torn);
}

/// The exit status of one file.
int lay_out_file(const std::string& file, const Options& options) {
  const bool in_place = file != "-";
  std::string text;
  if (!read(file, text)) return unusable;
  const language::LaidOut result = language::lay_out(text);
  if (!result.reason.empty())
    return fail(place_at(in_place ? file : "<stdin>", text, result.at), result.reason), unusable;
  const bool changes = result.text != text;
  if (changes || !in_place)
    if (!options.check_layout && !write(file, result.text)) return unusable;
  if (changes && !options.quiet && (in_place || options.check_layout)) std::cout << file << '\n';
  return changes && options.check_layout ? different : 0;
}

}  // namespace

int lay_out_files(const Options& options) {
  int status = 0;
  for (const std::string& file : options.files)
    status = std::max(status, lay_out_file(file, options));
  return status;
}

}  // namespace kiva::tarn_program

#include "tarn/readers/readers.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "tarn/session/session_files.h"

namespace kiva {

namespace {

struct Row {
  const char* ending;
  Netlist (*read)(std::istream&);
};
constexpr Row rows[] = {
    {".blif", read_blif}, {".bench", read_gates}, {".aag", read_aiger}, {".aig", read_aiger}};

}  // namespace

bool is_netlist(const std::string& file) {
  for (const Row& row : rows)
    if (file.ends_with(row.ending)) return true;
  return false;
}

Module* read_netlist(const std::string& file) {
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) throw NetlistError(0, "is a directory");
  std::ifstream in(file, std::ios::binary);
  if (!in) throw NetlistError(0, std::generic_category().message(errno));
  SessionFiles::current().note_read(file);
  for (const Row& row : rows) {
    if (!file.ends_with(row.ending)) continue;
    Netlist list = row.read(in);
    if (list.name.empty()) list.name = std::filesystem::path(file).stem().string();
    return list.module();
  }
  return nullptr;
}

}  // namespace kiva

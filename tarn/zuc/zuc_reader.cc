#include "tarn/zuc/zuc_reader.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <system_error>

#include "base/Stringpp.h"
#include "tarn/model/module.h"
#include "tarn/model/sexception.h"
#include "tarn/session/session_files.h"
#include "tarn/zuc/zuc_parser.h"
#include "tarn/zuc/zuc_scanner.h"

namespace kiva {

namespace {

/// The parser's trace. Beside the file it is whole when the read ends, however it does, replaces a
/// plain file alone, and that it cannot be written does not matter.
class ReaderTrace {
 public:
  explicit ReaderTrace(const std::string& beside)
      : chosen_(SessionFiles::current().trace), nowhere_(nullptr) {
    std::error_code none;
    const std::filesystem::file_status there = std::filesystem::symlink_status(beside, none);
    if (!chosen_ && (!exists(there) || is_regular_file(there))) file_.emplace(beside);
  }
  ~ReaderTrace() {
    if (file_) static_cast<void>(file_->finish(WholeFile::Sync::no));
  }
  ReaderTrace(const ReaderTrace&) = delete;
  ReaderTrace& operator=(const ReaderTrace&) = delete;

  bool wanted() const { return chosen_ ? *chosen_ != nullptr : file_ && file_->opened(); }
  std::ostream& out() { return !wanted() ? nowhere_ : chosen_ ? **chosen_ : file_->out(); }

 private:
  std::optional<std::ostream*> chosen_;
  std::optional<SessionOutput> file_;
  std::ostream nowhere_;
};

}  // namespace

ZucRead read_zuc_file(const std::string& file, const std::string& instance,
                      const std::string& run_instance, const std::list<std::string>* awaited_inputs,
                      const std::list<std::string>* awaited_outputs) {
  ZucRead read;
  const auto failed = [&](int line, const std::string& reason) {
    read.where = {file, line, 0, line, 0};
    read.reason = reason;
    read.problem = read.where.text() + ": " + reason;
    return read;
  };
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) return failed(0, "is a directory");
  std::ifstream in(file, std::ios::binary);
  if (!in) return failed(0, std::generic_category().message(errno));
  read.opened = true;
  SessionFiles::current().note_read(file);
  ReaderTrace trace(file + ".log");
  class_zuc_parser parser;
  zuc_scanner scanner(&in, &trace.out());
  parser.plexer = &scanner;
  parser.add_awaited_io(awaited_inputs, awaited_outputs);
  try {
    if (parser.parse(trace.out(), trace.wanted() ? 1 : 0, instance, run_instance) != 0)
      return failed(parser.problem().line, parser.problem().reason);
    read.module = parser.pmodule_parse;
  } catch (const LibraryException& exception) {
    return failed(parser.line(), exception.text());
  } catch (const FatalDiagnostic& fatal) {
    Diagnostic fault = fatal.diagnostic();
    if (!fault.where.known()) fault.where = {file, parser.line(), 0, parser.line(), 0};
    throw FatalDiagnostic(std::move(fault));
  }
  return read;
}

Module* read_zuc(const std::string& file, const std::string& instance,
                 const std::string& run_instance, const std::list<std::string>* inputs,
                 const std::list<std::string>* outputs) {
  const ZucRead read = read_zuc_file(file, instance, run_instance, inputs, outputs);
  if (!read.opened) {
    std::cerr << "File: " << file << " does not exist\n";
  } else if (read.module == nullptr) {
    std::cerr << read.problem << "\nERROR during loading file : " << file << '\n';
  }
  return read.module;
}

namespace {

/// The first line of a file, cut to what the search reads of it.
std::string first_line(const std::string& file) {
  constexpr size_t most = 256;
  std::ifstream in(file);
  std::string line;
  for (char c; line.size() < most && in.get(c) && c != '\n';) line += c;
  return line;
}

/// Where the module's name ends in the line, as a word of its own; npos when it is not there.
size_t behind_name(const std::string& line, const std::string& module) {
  const auto part_of_name = [&](size_t at) { return at < line.size() && est_lc(line[at]); };
  for (size_t at = line.find(module); at != std::string::npos; at = line.find(module, at + 1)) {
    const size_t after = at + module.size();
    if ((at == 0 || !part_of_name(at - 1)) && !part_of_name(after)) return after;
  }
  return std::string::npos;
}

int flag_behind(const std::string& line, size_t after) {
  return static_cast<int>(std::strtol(line.c_str() + after, nullptr, 10));
}

/// The listed file whose first line holds the name, and where the name ends in that line. Source
/// text is no compiled module.
struct Found {
  std::string file;
  std::string line;
  size_t after = 0;
};

Found find_module(const std::string& module) {
  if (Module::CompilationFileList() != nullptr)
    for (const std::string& file : *Module::CompilationFileList()) {
      if (file.ends_with(".zu")) continue;
      const std::string line = first_line(file);
      const size_t after = behind_name(line, module);
      if (after != std::string::npos) return {file, line, after};
    }
  return {};
}

}  // namespace

std::string listed_zuc_file(const std::string& module) {
  return find_module(module).file;
}

int listed_zuc_reincarnate(const std::string& module) {
  const Found found = find_module(module);
  return found.file.empty() ? -1 : flag_behind(found.line, found.after);
}

int zuc_reincarnate(const std::string& module, const std::string& file) {
  const std::string line = first_line(file);
  const size_t after = behind_name(line, module);
  return after == std::string::npos ? -1 : flag_behind(line, after);
}

Module* read_listed_zuc(const std::string& module, const std::list<std::string>* inputs,
                        const std::list<std::string>* outputs) {
  const std::string file = listed_zuc_file(module);
  if (!std::ifstream(file)) return nullptr;
  return read_zuc(file, "", "", inputs, outputs);
}

}  // namespace kiva

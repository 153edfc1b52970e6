// The programs themselves, while memory runs out or a file cannot be written: each ends with a
// status and a line, leaves older files whole and no others, and no sanitizer speaks. KIVA_FAULTS
// is the number of faults of a kind that are tried for each command.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <map>
#include <random>
#include <regex>
#include <set>
#include <sstream>

#include "engine/lit_source.h"
#include "engine/session_file.h"
#include "programs/report.h"
#include "tarn/session/session.h"
#include "tarn/zuc/zuc_reader.h"
#include "tests/injected/injection.h"
#include "tests/support/setting.h"
#include "tests/support/temp_dir.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

int tarn_main(int argc, char** argv);
int console_main(int argc, char** argv);

namespace kiva::test {
namespace {

constexpr int leaked = 98, thrown = 97;

bool leaks() {
#ifdef __SANITIZE_ADDRESS__
  return __lsan_do_recoverable_leak_check() != 0;
#else
  return false;
#endif
}

/// What the window reads: a module, the map of its source and the session of a run.
int read_as_the_window(const std::vector<std::string>& files) {
  return programs::run_reported("window", [&] {
    Session session;
    const Session::Use use(session);
    const ZucRead read = read_zuc_file(files[1], "", "");
    if (read.module == nullptr) throw std::runtime_error(read.reason);
    Simulation simulation(read.module);
    Recording recording(&simulation);
    Marks marks;
    const LitSource lit(read_text(files[2]), simulation);
    std::string problem = lit.problem();
    if (problem.empty()) problem = open_session(read_text(files[3]), recording, nullptr, marks);
    if (!problem.empty()) throw std::runtime_error(problem);
    std::cout << session_text(recording, marks) << lit.instances().size() << '\n';
    return 0;
  });
}

/// The three of them, in this folder.
const TempDir& window_files() {
  static const TempDir dir;
  static const bool made = [] {
    const std::string at = dir.path().string(), example = KIVA_SOURCE "/examples/washing_machine/";
    EXPECT_EQ(
        std::system((KIVA_PROGRAMS "/tarn -q --map -d " + at + ' ' + example + "washing_machine.zu")
                        .c_str()),
        0);
    dir.write("session", R"({"module":"washing_machine","position":[1,3],"branches":[
        {"begins":"load","instants":["start","","full","tick"]},
        {"departs":[0,2],"instants":["full skip","stop"]}],"marks":[[1,3,"here"]]})");
    return true;
  }();
  EXPECT_TRUE(made);
  return dir;
}

using Files = std::map<std::string, std::string>;

struct Ended {
  int status;
  std::string out, err;
  Files files;
  bool operator==(const Ended&) const = default;
};

struct Fault {
  Faulty kind = Faulty::memory;
  long n = 0;
  bool lasting = false;
};

const std::regex one_error(
    "([^\\n]+: note: [^\\n]+\n)*[^\\n]+: error: [^\\n]+\n([^\\n]+: note: [^\\n]+\n)*");

/// One command, in a folder that holds an older file of each name that it writes.
class Command {
 public:
  explicit Command(const std::string& text) : text_(text) {
    for (size_t at; (at = text_.find("FILES")) != std::string::npos;)
      text_.replace(at, 5, window_files().path().string());
    for (size_t at; (at = text_.find("DIR")) != std::string::npos;)
      text_.replace(at, 3, dir_.path().string());
    std::istringstream in(text_);
    for (std::string word; in >> word;) words_.push_back(word);
    for (const auto& [name, none] : run({}).files) older_[name] = "older\n";
    whole_ = run({});
  }

  void try_faults(Faulty kind, bool lasting) {
    EXPECT_EQ(run({kind}), whole_) << text_;
    const long calls = *calls_, tries = setting("KIVA_FAULTS", 40);
    std::mt19937 random(static_cast<unsigned>(setting("KIVA_SEED", 1)));
    std::set<long> numbers;
    for (long i = 0; i < std::min(calls, tries); ++i)
      numbers.insert(calls <= tries ? i + 1 : static_cast<long>(random() % calls) + 1);
    for (const long n : numbers) try_fault({kind, n, lasting});
  }

  const Ended& whole() const { return whole_; }
  /// Whether a fault has been told with the file that the command was about.
  bool named_its_file() const { return named_its_file_; }
  bool asks() const { return words_[1] == "--eval" || words_[1] == "--equiv"; }

 private:
  /// In a process of its own, that a program which breaks ends alone.
  Ended run(const Fault& fault) {
    for (const auto& [name, content] : older_) dir_.write(name, content);
    const std::string out = said_.file("out"), err = said_.file("err");
    const pid_t child = fork();
    if (child == 0) {
      if (freopen(out.c_str(), "w", stdout) == nullptr) _exit(thrown);
      if (freopen(err.c_str(), "w", stderr) == nullptr) _exit(thrown);
      _exit(run_here(fault));
    }
    int status = 0;
    waitpid(child, &status, 0);
    Ended ended{WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status),
                read_text(out),
                read_text(err),
                {}};
    for (const auto& entry : std::filesystem::directory_iterator(dir_.path()))
      ended.files[entry.path().filename()] = read_text(entry.path());
    return ended;
  }

  int run_here(const Fault& fault) {
    std::vector<char*> arguments;
    for (std::string& word : words_) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const int count = static_cast<int>(words_.size());
    int status = thrown;
    try {
      const Injection injection(fault.kind, fault.n, fault.lasting);
      status = words_[0] == "window"
                   ? read_as_the_window(words_)
                   : (words_[0] == "tarn" ? tarn_main : console_main)(count, arguments.data());
      *calls_ = Injection::calls();
    } catch (...) {
    }
    std::cout.flush();
    fflush(stdout);
    return leaks() ? leaked : status;
  }

  void try_fault(const Fault& fault) {
    SCOPED_TRACE(text_ + (fault.kind == Faulty::memory ? ": memory " : ": write ") +
                 std::to_string(fault.n) + (fault.lasting ? " and on" : ""));
    const Ended ended = run(fault);
    for (const auto& [name, content] : ended.files)
      EXPECT_TRUE(content == older_[name] || content == whole_.files[name]) << name << content;
    EXPECT_EQ(ended.files.size(), whole_.files.size());
    if (ended.status == 0) {
      EXPECT_EQ(ended, whole_);
    } else {
      EXPECT_TRUE(ended.status == 1 || ended.status == 2) << ended.status;
      EXPECT_TRUE(std::regex_match(ended.err, one_error)) << ended.err;
      named_its_file_ = named_its_file_ || ended.err.starts_with(words_.back() + ": error: out of");
    }
  }

  TempDir dir_, said_;
  std::string text_;
  std::vector<std::string> words_;
  Files older_;
  Ended whole_;
  bool named_its_file_ = false;
  long* calls_ = static_cast<long*>(
      mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
};

class Faults : public testing::TestWithParam<const char*> {};

TEST_P(Faults, EndClearly) {
  Command command(GetParam());
  ASSERT_EQ(command.whole().status, 0) << command.whole().err;
  command.try_faults(Faulty::memory, false);
  command.try_faults(Faulty::memory, true);
  command.try_faults(Faulty::write, false);
  EXPECT_TRUE(command.named_its_file() || !command.asks());
}

#define EXAMPLE(name) KIVA_SOURCE "/examples/" name "/" name
INSTANTIATE_TEST_SUITE_P(
    , Faults,
    testing::Values(
        "tarn -q -d DIR --map " EXAMPLE("washing_machine") ".zu",
        "tarn -q -d DIR --forget-locals --comments " EXAMPLE(
            "egg_timer") ".zu " KIVA_SOURCE "/examples/egg_timer/countdown"
                         ".zu",
        "tarn -q -d DIR --classic --c --zuc " EXAMPLE("shift_register") ".zu",
        "tarn -q -d DIR --c --blif --vhdl --verilog --systemc --smv " EXAMPLE("lift") ".zu",
        "tarn -q -d DIR --lustre --esterel --vhdl-altera --csharp --gal --doc --latex "
        "--debug " EXAMPLE("lift") ".zu",
        "tarn -q -d DIR --keep-rtl --explicit " EXAMPLE("crossing") ".zu",
        "tarn -q -d DIR --kiva --c --csharp --lustre " EXAMPLE("thermostat") ".zuc",
        "tarn --equiv " EXAMPLE("counter") ".zuc " EXAMPLE("counter") ".zuc",
        "tarn --eval b0 " EXAMPLE("counter") ".zuc",
        "kiva-console -o DIR/o --format vcd --save-stimuli DIR/s --log DIR/l " EXAMPLE(
            "counter") ".zuc " EXAMPLE("counter") ".stimuli",
        "window FILES/washing_machine.zuc FILES/washing_machine.zuc.map FILES/session",
        "kiva-console --expect " EXAMPLE("counter") ".trace " EXAMPLE("counter") ".zuc " EXAMPLE(
            "counter") ".stimuli",
        "kiva-console --random 20 --format json --until b0 " EXAMPLE("counter") ".zuc",
        "kiva-console --why carry@9 " EXAMPLE("counter") ".zuc " EXAMPLE("counter") ".stimuli"));

}  // namespace
}  // namespace kiva::test

#include <algorithm>

#include "tarn/readers/readers.h"
#include "tarn/readers/words.h"

namespace kiva {

namespace {

class BlifReader {
 public:
  explicit BlifReader(std::istream& in) : lines_(in) { list_.name.clear(); }

  Netlist read() {
    std::vector<std::string> words;
    while (!ended_ && lines_.next(words)) take(words);
    finish_table();
    for (const auto& [name, line] : outputs_) list_.add_output(name, line);
    if (!begun_) throw NetlistError(lines_.line(), "holds no .model");
    return std::move(list_);
  }

 private:
  [[noreturn]] void fail(const std::string& reason) const {
    throw NetlistError(lines_.line(), reason);
  }

  void take(const std::vector<std::string>& words) {  // house: a word a branch
    const std::string& first = words[0];
    if (!first.starts_with('.')) return take_row(words);
    finish_table();
    if (!begun_ && first != ".model") fail("a .model is awaited, not " + first);
    if (first == ".model") {
      if (begun_) fail("a second .model; one is read");
      begun_ = true;
      if (words.size() > 1) list_.name = words[1];
    } else if (first == ".inputs") {
      for (size_t i = 1; i < words.size(); ++i) list_.add_input(words[i], lines_.line());
    } else if (first == ".outputs") {
      for (size_t i = 1; i < words.size(); ++i) outputs_.emplace_back(words[i], lines_.line());
    } else if (first == ".names") {
      if (words.size() < 2) fail(".names without a net");
      table_ = {.line = lines_.line()};
      for (size_t i = 1; i + 1 < words.size(); ++i)
        table_.reads.push_back(list_.net(words[i], lines_.line()));
      target_ = list_.net(words.back(), lines_.line());
    } else if (first == ".latch") {
      take_latch(words);
    } else if (first == ".end") {
      ended_ = true;
    } else {
      fail("\"" + first + "\" is not read");
    }
  }

  /// .latch NEXT NOW [TYPE CLOCK] [INITIAL]
  void take_latch(const std::vector<std::string>& words) {
    if (words.size() < 3 || words.size() > 6) fail(".latch wants two nets");
    const bool has_initial = words.size() % 2 == 0;
    const std::string initial = has_initial ? words.back() : "3";
    if (initial.size() != 1 || initial < "0" || initial > "3")
      fail("\"" + initial + "\" is no initial value of a latch");
    const int next = list_.net(words[1], lines_.line()), now = list_.net(words[2], lines_.line());
    list_.add_latch(now, next, initial == "1", lines_.line());
  }

  void take_row(const std::vector<std::string>& words) {
    if (target_ < 0) fail("\"" + words[0] + "\" stands in no table");
    const std::string row = words.size() == 1 ? "" : words[0];
    const std::string& value = words.back();
    if (words.size() > 2 || row.size() != table_.reads.size() ||
        row.find_first_not_of("01-") != std::string::npos)
      fail("a row of this table has " + std::to_string(table_.reads.size()) +
           " of 0, 1 or -, then 0 or 1");
    if (value != "0" && value != "1") fail("a row ends with 0 or 1, not \"" + value + "\"");
    if (!table_.rows.empty() && table_.on != (value == "1")) fail("rows for 0 and for 1");
    table_.on = value == "1";
    table_.rows.push_back(row);
  }

  void finish_table() {
    if (target_ >= 0) list_.add_gate(target_, std::move(table_));
    target_ = -1;
  }

  WordLines lines_;
  Netlist list_;
  std::vector<std::pair<std::string, int>> outputs_;
  Netlist::Gate table_;
  int target_ = -1;  ///< the net of the table that is read; -1 for none
  bool begun_ = false, ended_ = false;
};

}  // namespace

Netlist read_blif(std::istream& in) {
  return BlifReader(in).read();
}

}  // namespace kiva

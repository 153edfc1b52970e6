#pragma once

#include <istream>
#include <string>
#include <vector>

namespace kiva {

/// The lines of a netlist as words: comments ("#" to the end) are left out, and a line that ends
/// with "\" goes on in the next.
class WordLines {
 public:
  explicit WordLines(std::istream& in) : in_(in) {}

  /// The words of the next line that has some; false at the end. `separators` part words, beside
  /// blanks, and are left out.
  bool next(std::vector<std::string>& words, const std::string& separators = "");
  int line() const { return line_; }

 private:
  std::istream& in_;
  int line_ = 0;
};

}  // namespace kiva

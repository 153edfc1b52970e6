#include "tarn/readers/words.h"

namespace kiva {

bool WordLines::next(std::vector<std::string>& words, const std::string& separators) {
  words.clear();
  const std::string apart = " \t\r\v\f" + separators;
  std::string line;
  for (bool goes_on = false; (words.empty() || goes_on) && std::getline(in_, line);) {
    ++line_;
    if (const size_t comment = line.find('#'); comment != std::string::npos) line.erase(comment);
    while (!line.empty() && apart.find(line.back()) != std::string::npos) line.pop_back();
    goes_on = line.ends_with('\\');
    if (goes_on) line.pop_back();
    for (size_t at = 0; (at = line.find_first_not_of(apart, at)) != std::string::npos;) {
      const size_t end = std::min(line.find_first_of(apart, at), line.size());
      words.push_back(line.substr(at, end - at));
      at = end;
    }
  }
  return !words.empty();
}

}  // namespace kiva

#include "proof/bounded_search.h"

namespace kiva::proof {

std::string BoundedSearch::so_far() const {
  return "not in the first " + std::to_string(good_) + (good_ == 1 ? " instant" : " instants");
}

Answer BoundedSearch::search(const Stop& stop, size_t most) {
  while (good_ < most && !stop()) {
    if (instants_.instants() == good_) {
      bad_ = instants_.add();
      stop.count(instants_.steps_to_add());
    }
    if (bad_ != zero) {
      const int bad = sat_.literal(bad_);
      const std::optional<bool> found = sat_.solve({bad}, stop);
      if (!found) break;
      if (*found) return failing();
      sat_.clause({-bad});
    }
    ++good_;
  }
  return {};
}

Answer BoundedSearch::failing() const {
  Answer answer{.verdict = Verdict::fails, .engine = name()};
  for (size_t instant = 0; instant < instants_.instants(); ++instant) {
    std::vector<bool>& inputs = answer.run.emplace_back();
    for (Literal input : instants_.inputs(instant)) inputs.push_back(sat_.value_of(input));
  }
  return answer;
}

std::unique_ptr<Engine> bounded_search(const Machine& machine) {
  return std::make_unique<BoundedSearch>(machine);
}

}  // namespace kiva::proof

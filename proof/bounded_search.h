#pragma once

#include "proof/engine.h"
#include "proof/sat.h"
#include "proof/unrolling.h"

namespace kiva::proof {

/// All runs of one, two, three instants by SAT.
class BoundedSearch : public Engine {
 public:
  explicit BoundedSearch(const Machine& machine)
      : instants_(machine, true), sat_(instants_.aig()) {}

  std::string name() const override { return "bounded search"; }
  size_t good_instants() const override { return good_; }
  std::string so_far() const override;
  Answer work(const Stop& stop) override { return search(stop, ~size_t{0}); }
  /// The same as long as no more than `most` instants are known to be good.
  Answer search(const Stop& stop, size_t most);

 private:
  Answer failing() const;

  Unrolling instants_;
  Sat sat_;
  Literal bad_ = zero;  ///< of the instant under way
  size_t good_ = 0;
};

}  // namespace kiva::proof

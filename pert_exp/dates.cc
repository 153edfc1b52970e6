// Dates: the longest chain before each equation (early) and behind each variable (late).
//
// Both kinds are defined by one recursion: a date is pushed to a variable; if it rises there, one
// more is pushed to all that follow. Dates only rise, so where no cycle can be reached the
// recursion ends in the least dates above those held that respect every edge it crossed, and the
// order of the pushes is of no account. On a cycle the dates climb until the level passes twice the
// number of variables; from then on a push sets its own variable and goes no further. What a cycle
// leaves behind therefore depends on the order, and so it does on an acyclic wood whose held dates
// (those of a file, or those an earlier cycle left) pass the bound.
//
// The recursion itself revisits paths, exponentially many in the worst case. So a push is put off
// where it provably cannot reach the bound: at a variable from which no cycle can be reached, and
// whose date plus the longest way onward stays within the bound. All pushes put off are then served
// by one pass in topological order (`settle`), before the first push that comes after the bound is
// passed, or that might pass it, and at the end. Everything else runs as the plain recursion, on a
// stack of its own.
//
// Why a date that is out of date in between does no harm: it is only ever too low, by pushes put
// off, and what it gives on is then repeated higher by settle(). A push that could pass the bound
// settles first. The level is too low in between only by amounts that stay within the bound.
//
// Invariants:
//   1. A push put off starts where no cycle can be reached.
//   2. While the level is within the bound, no date held is above it.
//   3. After settle() nothing is put off.

#include <algorithm>
#include <iostream>
#include <limits>

#include "base/check.h"
#include "pert_exp/wood_graph.h"

namespace kiva {

namespace {

/// Dates of a file may be any number.
long plus(long date, long more) {
  constexpr long largest = std::numeric_limits<long>::max();
  return date > largest - more ? largest : date + more;
}

/// The recursion in one direction. `Dates` is a graph with `get`, `set`, `rises(v, date)`, and
/// `monotone(date)`: whether a push of `date` can only raise dates.
template <class Dates>
class Propagation {
 public:
  /// Of each variable `height` says `unseen`, and `put_off` no.
  Propagation(Dates dates, long& level, long unseen, std::vector<long>& height,
              std::vector<char>& put_off)
      : dates_(dates),
        level_(level),
        bound_(2 * static_cast<long>(height.size())),
        unseen_(unseen),
        height_(height),
        put_off_(put_off) {}

  const Dates& dates() const { return dates_; }

  /// Pushes `date` to v.
  void push(long v, long date) {
    if (!raise(v, date)) return;
    const auto edge = [this](const auto& from, long next, long) -> std::optional<long> {
      if (!raise(next, plus(from.data, 1))) return std::nullopt;
      return dates_.get(next);
    };
    walk_depth_first(dates_, v, dates_.get(v), edge, [](const auto&, const auto*) {});
  }

  /// Serves the pushes put off.
  void settle() {
    if (!any_put_off_) return;
    any_put_off_ = false;
    for (auto v = finished_.rbegin(); v != finished_.rend(); ++v) {
      if (!put_off_[*v]) continue;
      KIVA_CHECK(1, height_[*v] >= 0);
      put_off_[*v] = 0;
      const long date = dates_.get(*v);
      level_ = std::max(level_, plus(date, 1));
      for (long next : dates_.next(*v)) {
        if (!dates_.enters(next) || !dates_.rises(next, plus(date, 1))) continue;
        dates_.set(next, plus(date, 1));
        put_off_[next] = 1;
      }
    }
    KIVA_CHECK(3, std::find(put_off_.begin(), put_off_.end(), 1) == put_off_.end());
  }

 private:
  /// The edges on the longest way from a vertex on.
  struct Height {
    long edges = 0;
    bool reaches_cycle = false;

    void absorb(long height_behind) {
      if (height_behind < 0) reaches_cycle = true;
      edges = std::max(edges, height_behind + 1);
    }
  };
  static constexpr long on_stack = -2, cyclic = -1;

  /// One step of the recursion; true when it goes on to what follows v.
  bool raise(long v, long date) {
    if (!dates_.enters(v)) return false;
    if (level_ > bound_) settle();
    if (!dates_.rises(v, date)) return false;
    if (date < -bound_ && level_ <= bound_) {
      // The climb along a cycle from here to the bound would not end in a lifetime.
      if (height_[v] == unseen_) measure(v);
      if (height_[v] == cyclic) date = 0;
    }
    if (level_ <= bound_ && dates_.monotone(date)) {
      if (height_[v] == unseen_) measure(v);
      if (height_[v] >= 0) {
        if (plus(date, height_[v] + 1) <= bound_) {
          KIVA_CHECK(2, date <= bound_);
          dates_.set(v, date);
          put_off_[v] = 1;
          any_put_off_ = true;
          return false;
        }
        settle();
        if (!dates_.rises(v, date)) return false;
      }
    }
    dates_.set(v, date);
    level_ = std::max(level_, plus(date, 1));
    return level_ <= bound_;
  }

  /// Fills height_ from v onward: the edges on the longest way, or `cyclic` where a cycle can be
  /// reached. finished_ gets the others, each after all that follow it.
  void measure(long v) {
    height_[v] = on_stack;
    const auto edge = [this](auto& from, long next, long) -> std::optional<Height> {
      if (!dates_.enters(next)) return std::nullopt;
      if (height_[next] == unseen_) {
        height_[next] = on_stack;
        return Height{};
      }
      from.data.absorb(height_[next]);
      return std::nullopt;
    };
    const auto leave = [this](const auto& done, auto* parent) {
      const bool cycle = done.data.reaches_cycle;
      height_[done.v] = cycle ? cyclic : done.data.edges;
      if (!cycle) finished_.push_back(done.v);
      if (parent != nullptr) parent->data.absorb(height_[done.v]);
    };
    walk_depth_first(dates_, v, Height{}, edge, leave);
  }

  Dates dates_;
  long& level_;
  const long bound_;
  const long unseen_;
  std::vector<long>& height_;
  std::vector<long> finished_;
  std::vector<char>& put_off_;
  bool any_put_off_ = false;
};

}  // namespace

class Bddexpressionwood::Dating {
 public:
  explicit Dating(Bddexpressionwood& wood)
      : wood_(wood),
        scratch_(prepared(wood, own_scratch_)),
        early_(Early{{wood}}, wood.nb_level, Dating_scratch::unseen, scratch_.early_height,
               scratch_.early_put_off),
        late_(Late{{wood}, wood.latest_date_table, none_negative(wood)}, wood.nb_level,
              Dating_scratch::unseen, scratch_.late_height, scratch_.late_put_off) {}
  ~Dating() {
    settle();
    if (!wood_.notes_entries_) return;
    for (long index : wood_.entries_in_use())
      scratch_.early_height[index] = scratch_.late_height[index] = Dating_scratch::unseen;
  }
  Dating(const Dating&) = delete;
  Dating& operator=(const Dating&) = delete;

  void push_early(long index, long date) { early_.push(index, date); }
  void push_late(long index, long date) { late_.push(index, date); }

  /// Pushes from one variable: early dates to its readers, late dates to what it reads. `report`
  /// begins the line about a reader outside the tables.
  void push_from(long index, const char* report) {
    const long nb_vars = wood_.nb_var_bdd;
    const index_set& readers = wood_.amont_dep_table[index];
    for (long reader : readers) {
      if (reader >= nb_vars) {
        std::cerr << report << reader << ">= " << nb_vars << '\n';
        continue;
      }
      early_.push(reader, plus(early_.dates().get(index), 1));
    }
    if (wood_.exp_table[index] == nullptr) return;
    if (readers.empty()) {
      wood_.nb_level = std::max(wood_.nb_level, plus(early_.dates().get(index), 1));
    }
    for (long dep : late_.dates().next(index)) late_.push(dep, plus(late_.dates().get(index), 1));
  }

 private:
  struct Early : Readers {
    long get(long v) const {
      const Bddexpression* e = wood.exp_table[v];
      return e == nullptr ? 0 : e->earliest_date;
    }
    void set(long v, long date) { wood.exp_table[v]->earliest_date = date; }
    bool rises(long v, long date) const { return date > get(v); }
    bool monotone(long) const { return true; }
  };

  /// A late date of 0 counts as none, whatever is pushed: with negative dates about, pushes may
  /// lower dates too.
  struct Late : Dependences {
    paged_table<long>& table;
    bool no_negative_date;

    long get(long v) const { return table[v]; }
    void set(long v, long date) { table[v] = date; }
    bool rises(long v, long date) const { return table[v] == 0 || date > table[v]; }
    bool monotone(long date) const { return no_negative_date && date > 0; }
  };

  static bool none_negative(const Bddexpressionwood& wood) {
    bool none = true;
    wood.for_each_entry([&](long index) { none = none && wood.latest_date_table[index] >= 0; });
    return none;
  }

  /// The scratch of a wood that notes its entries is kept: to make it costs what the manager has.
  static Dating_scratch& prepared(Bddexpressionwood& wood, Dating_scratch& own) {
    Dating_scratch& scratch = wood.notes_entries_ ? wood.dating_scratch_ : own;
    for (std::vector<long>* heights : {&scratch.early_height, &scratch.late_height})
      heights->resize(wood.nb_var_bdd, Dating_scratch::unseen);
    for (std::vector<char>* put_off : {&scratch.early_put_off, &scratch.late_put_off})
      put_off->resize(wood.nb_var_bdd, 0);
    return scratch;
  }

  void settle() {
    early_.settle();
    late_.settle();
  }

  Bddexpressionwood& wood_;
  Dating_scratch own_scratch_;
  Dating_scratch& scratch_;
  Propagation<Early> early_;
  Propagation<Late> late_;
};

long Bddexpressionwood::compute_dates() {
  update_bdd_vars();
  if (nb_level != 0 || nb_var_bdd == 0) return nb_level;
  for_each_entry([this](long index) { latest_date_table[index] = 0; });
  {
    Dating dating(*this);
    for_each_entry([&](long index) {
      dating.push_from(index, "ERREUR dans compute_date(): nombre de variables trop grand :");
    });
  }
  return nb_level;
}

long Bddexpressionwood::compute_dates(const std::list<long>& indices) {
  constexpr const char* report =
      "ERREUR dans compute_date(list ident): numero de variables trop grand :";
  update_bdd_vars();
  if (nb_level == 0) return nb_level = compute_dates();
  {
    Dating dating(*this);
    for (long index : indices) {
      if (in_tables(index)) {
        dating.push_from(index, report);
      } else {
        std::cerr << report << index << ">= " << nb_var_bdd << '\n';
      }
    }
  }
  return nb_level;
}

void Bddexpressionwood::early_propagation(long index, long date) {
  Dating(*this).push_early(index, date);
}

void Bddexpressionwood::late_propagation(long index, long date) {
  Dating(*this).push_late(index, date);
}

long PERT(Bddexpressionwood* wood) {
  return wood->compute_dates();
}

}  // namespace kiva

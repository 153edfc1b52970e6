// Which emissions of values meet in one instant, so that one overrules the other.
//
// The body is walked with names for instants: that of its start, and others by how they follow from
// one, by a pause, by a wait for an expression, or by what is not looked into. Two emissions with
// one such name are made in one instant if what must hold for them does. It is told where the
// earlier in the text never counts in that instant, and, of branches side by side, also where it
// does not whenever the later one is made. What stands in a sequence and is overruled at times is a
// value for the other times.

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <tuple>

#include "tarn/model/module.h"
#include "tarn/zu/statement_walk.h"
#include "tarn/zu/statements/abort.h"
#include "tarn/zu/statements/halt.h"
#include "tarn/zu/statements/loop.h"
#include "tarn/zu/statements/nothing.h"
#include "tarn/zu/statements/pause.h"
#include "tarn/zu/statements/present.h"
#include "tarn/zu/statements/sustain.h"
#include "tarn/zu/statements/wait.h"
#include "tarn/zu/three_states.h"
#include "tarn/zu/warnings.h"

namespace kiva {

namespace {

using Instant = int;
constexpr Instant never = -1;

/// A row of things that shares its beginning with others.
template <class Thing>
struct Chain {
  const Chain* before;
  Thing last;
  int length;
};

template <class Thing>
int length(const Chain<Thing>* chain) {
  return chain == nullptr ? 0 : chain->length;
}

/// What must hold for a statement to be reached: the expression is present, or is not.
struct Condition {
  Instant instant;
  const Expression* expression;
  bool present;
};
using Conditions = const Chain<Condition>*;

/// A branch of a statement whose branches run side by side.
struct Branch {
  const Statement* parallel;
  size_t index;
};
using Branches = const Chain<Branch>*;

struct Made {
  const Emission* emission;
  Conditions conditions;
  Branches branches;
};

/// Where a walk is.
struct At {
  Instant instant;
  Conditions conditions;
  Branches branches;
};

bool side_by_side(Branches a, Branches b) {
  while (length(a) > length(b)) a = a->before;
  while (length(b) > length(a)) b = b->before;
  bool apart = false;
  for (; a != b; a = a->before, b = b->before)
    apart = a->last.parallel == b->last.parallel && a->last.index != b->last.index;
  return apart;
}

class Meetings {
 public:
  Meetings(const Module& module, std::vector<Diagnostic>& found) : module_(module), found_(found) {}

  void find() {
    size_t valued = 0, statements = 0;
    for_each_statement(module_.getStatement(), [&](const Statement& statement) {
      const auto* emission = dynamic_cast<const Emission*>(&statement);
      valued += emission != nullptr && emission->getDataSignal() != nullptr ? 1 : 0;
      ++statements;
    });
    if (valued < 2) return;
    visits_left_ = static_cast<long>(4 * statements);
    walk(*module_.getStatement(), {other_instant(), nullptr, nullptr});
    for (auto& [where, made] : made_) tell(made);
  }

 private:
  // Instants.

  Instant other_instant() { return instants_++; }
  Instant named_instant(Instant from, const char* way, const Expression* e = nullptr) {
    const std::string text = e == nullptr ? "" : expression_key(e);
    if (e != nullptr && text.empty()) return other_instant();
    const auto [at, is_new] = named_.try_emplace({from, context_, way, text}, instants_);
    if (is_new) ++instants_;
    return at->second;
  }

  // The walk gives the instant of the end, and what is known there.

  Conditions under(const At& at, const Expression* e, bool present) {
    conditions_.push_back({at.conditions, {at.instant, e, present}, length(at.conditions) + 1});
    return &conditions_.back();
  }

  At walk(const Statement& statement, const At& at) {
    --visits_left_;
    if (const auto* sustain = dynamic_cast<const SustainUntil*>(&statement)) {
      note(*sustain, {at.instant, under(at, sustain->getExpression(), false), at.branches});
      return {other_instant(), at.conditions, at.branches};
    }
    if (const auto* emission = dynamic_cast<const Emission*>(&statement)) {
      note(*emission, at);
      return at;
    }
    if (dynamic_cast<const Nothing*>(&statement) != nullptr) return at;
    if (dynamic_cast<const Halt*>(&statement) != nullptr) return {never, nullptr, nullptr};
    if (dynamic_cast<const Pause*>(&statement) != nullptr)
      return {named_instant(at.instant, "pause"), at.conditions, at.branches};
    if (const auto* wait = dynamic_cast<const Wait*>(&statement)) {
      const At end{named_instant(at.instant, "wait", wait->getExpression()), at.conditions,
                   at.branches};
      return {end.instant, under(end, wait->getExpression(), true), at.branches};
    }
    if (const auto* present = dynamic_cast<const Present*>(&statement))
      return walk_present(*present, at);
    if (const auto* loop = dynamic_cast<const Loop*>(&statement)) return walk_loop(*loop, at);
    if (const auto* abort = dynamic_cast<const Preemption*>(&statement))
      return walk_abort(*abort, at);
    if (statement.isSequence()) return walk_sequence(statement, at);
    if (statement.isParallel()) return walk_parallel(statement, at);
    return {other_instant(), nullptr, at.branches};
  }

  At walk_sequence(const Statement& statement, const At& at) {
    At now = at;
    for (const Statement* member : statement.children())
      if (now.instant != never) now = walk(*member, now);
    return now;
  }

  /// The end of some that begin together: known where all, or all that end, end together.
  At joined(const std::vector<At>& ends, const At& at, bool all) {
    Instant end = never;
    for (const At& each : ends) {
      if (each.instant == never && all) return {never, nullptr, nullptr};
      if (each.instant == never) continue;
      const bool first = end == never || end == each.instant;
      end = first ? each.instant : other_instant();
    }
    return {end, at.conditions, at.branches};
  }

  At walk_parallel(const Statement& statement, const At& at) {
    std::vector<At> ends;
    for (const Statement* member : statement.children()) {
      branches_.push_back({at.branches, {&statement, ends.size()}, length(at.branches) + 1});
      ends.push_back(walk(*member, {at.instant, at.conditions, &branches_.back()}));
    }
    return joined(ends, at, true);
  }

  At walk_present(const Present& present, const At& at) {
    const Expression* e = present.getExpression();
    const At then = walk(*present.getThen(), {at.instant, under(at, e, true), at.branches});
    if (present.getElse() == nullptr) return joined({then, at}, at, false);
    const At other = walk(*present.getElse(), {at.instant, under(at, e, false), at.branches});
    return joined({then, other}, at, false);
  }

  /// What comes later in the body may not come at all.
  At walk_abort(const Preemption& abort, const At& at) {
    const int outer = context_;
    context_ = ++contexts_;
    const At end = walk(*abort.getBody(), at);
    context_ = outer;
    return {end.instant == at.instant ? at.instant : other_instant(), at.conditions, at.branches};
  }

  /// The end of the body and its next start meet.
  At walk_loop(const Loop& loop, const At& at) {
    const At end = walk(*loop.getBody(), at);
    if (end.instant != never && end.instant != at.instant && visits_left_ > 0)
      walk(*loop.getBody(), end);
    return {never, nullptr, nullptr};
  }

  void note(const Emission& emission, const At& at) {
    if (emission.getDataSignal() == nullptr) return;
    made_[{at.instant, emission.getSignal()}].push_back({&emission, at.conditions, at.branches});
  }

  // What meets.

  void tell(std::vector<Made>& made) {
    const auto place = [](const Made& m) {
      const SourceSpan& span = m.emission->getSpan();
      return std::tuple(span.first_line, span.first_column);
    };
    std::stable_sort(made.begin(), made.end(),
                     [&](const Made& a, const Made& b) { return place(a) < place(b); });
    for (size_t i = 0; i + 1 < made.size(); ++i)
      for (size_t k = i + 1; k < made.size() && comparisons_left_-- > 0; ++k)
        if (place(made[i]) != place(made[k]) && told(made[i], made[k])) break;
  }

  bool told(const Made& first, const Made& later) {
    const bool always = follows(later.conditions, first.conditions);
    if (!always && !(side_by_side(first.branches, later.branches) &&
                     follows(first.conditions, later.conditions)))
      return false;
    if (value_text(first) == value_text(later)) return false;
    if (!told_.insert(first.emission).second) return true;
    Diagnostic overruled =
        warning("overruled", first.emission->getSpan(),
                "the value of \"" + first.emission->getSignalName() +
                    (always ? "\" does not count: it is emitted again in the same instant"
                            : "\" does not count in an instant in which it is emitted again"));
    overruled.notes.push_back({place_of(later.emission->getSpan()), "here"});
    found_.push_back(std::move(overruled));
    return true;
  }

  std::string value_text(const Made& made) const {
    constexpr long longest = 1000;
    const Signal* signal = made.emission->getDataSignal();
    const DataBinding* binding = module_.getBinding(signal->getInternalName());
    if (binding == nullptr || binding->getValue()->written_size() > longest)
      return signal->getInternalName();
    std::ostringstream text;
    binding->getValue()->print_debug(text);
    return text.str();
  }

  /// Whether `wanted` holds whenever `given` does, which can hold. A no may mean that it is not
  /// known.
  bool follows(Conditions wanted, Conditions given) {
    std::vector<Condition> more_wanted, more_given;
    const auto step = [this](Conditions& at, std::vector<Condition>& row) {
      row.push_back(at->last);
      at = at->before;
      --comparisons_left_;
    };
    while (length(given) > length(wanted)) step(given, more_given);
    while (length(wanted) > length(given)) step(wanted, more_wanted);
    while (wanted != given) {
      step(wanted, more_wanted);
      step(given, more_given);
    }
    if (more_wanted.empty()) return true;
    std::set<Moment> moments;
    for (const auto* row : {&more_wanted, &more_given})
      for (const Condition& c : *row)
        for_each_signal(c.expression, [&](const Signal* signal) {
          moments.insert({signal, c.instant});
        });
    bool possible = false, always = true;
    const bool tried = for_each_state(moments, [&](const States& states) {
      const auto hold = [&](const std::vector<Condition>& row) {
        return std::all_of(row.begin(), row.end(), [&](const Condition& c) {
          return is_present(rails(c.expression, c.instant, states)) == c.present;
        });
      };
      if (!hold(more_given)) return;
      possible = true;
      always = always && hold(more_wanted);
    });
    return tried && possible && always;
  }

  const Module& module_;
  std::vector<Diagnostic>& found_;
  long visits_left_ = 0;  ///< before loops are no longer walked twice
  long comparisons_left_ = 1'000'000;
  int context_ = 0;  ///< of the innermost abort
  int contexts_ = 0;
  Instant instants_ = 0;
  std::map<std::tuple<Instant, int, std::string, std::string>, Instant> named_;
  std::list<Chain<Condition>> conditions_;
  std::list<Chain<Branch>> branches_;
  std::map<std::pair<Instant, const Signal*>, std::vector<Made>> made_;
  std::set<const Emission*> told_;
};

}  // namespace

void find_overruled(const Module& module, std::vector<Diagnostic>& found) {
  Meetings(module, found).find();
}

}  // namespace kiva

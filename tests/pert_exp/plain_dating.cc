#include "tests/pert_exp/plain_dating.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

namespace kiva::test {

namespace {

long after(long date) {
  return date == std::numeric_limits<long>::max() ? date : date + 1;
}

long random_date(std::mt19937& random, long nb_vars, const Shape& shape) {
  const auto between = [&random](long least, long largest) {
    return std::uniform_int_distribution<long>(least, largest)(random);
  };
  switch (shape.dates) {
    case Shape::undated:
      return 0;
    case Shape::small_dates:
      return between(0, nb_vars);
    case Shape::dates_about_the_bound:
      return between(0, 2) == 0 ? between(nb_vars, 2 * nb_vars + 1) : between(0, 2);
    case Shape::any_dates:
      break;
  }
  constexpr long largest = std::numeric_limits<long>::max();
  // The recursion climbs along a cycle from wherever it starts, one by one.
  const long lowest = shape.acyclic ? -largest : -2 * nb_vars;
  const long special[] = {0, 0, -1, -3, largest, largest - 2, lowest, 3 * nb_vars};
  return between(0, 3) == 0 ? special[between(0, 7)] : between(-3, nb_vars);
}

}  // namespace

void Plain_wood::equation(long index, const std::set<long>& reads) {
  deps[index] = reads;
  for (long dep : reads) readers[dep].insert(index);
}

void Plain_wood::early_propagation(long index, long date) {
  if (!deps[index] || date <= early[index]) return;
  early[index] = date;
  level = std::max(level, after(date));
  if (level > 2 * size()) return;
  for (long reader : readers[index]) early_propagation(reader, after(date));
}

void Plain_wood::late_propagation(long index, long date) {
  if (late[index] != 0 && late[index] >= date) return;
  late[index] = date;
  level = std::max(level, after(date));
  if (!deps[index] || level > 2 * size()) return;
  for (long dep : *deps[index]) late_propagation(dep, after(date));
}

void Plain_wood::push_from(long index) {
  for (long reader : readers[index]) {
    early_propagation(reader, deps[index] ? after(early[index]) : 1);
  }
  if (!deps[index]) return;
  if (readers[index].empty()) level = std::max(level, after(early[index]));
  for (long dep : *deps[index]) late_propagation(dep, after(late[index]));
}

long Plain_wood::compute_dates() {
  if (level != 0 || size() == 0) return level;
  std::fill(late.begin(), late.end(), 0);
  for (long index = 0; index < size(); ++index) push_from(index);
  return level;
}

long Plain_wood::compute_dates(const std::list<long>& indices) {
  if (level == 0) return compute_dates();
  for (long index : indices) push_from(index);
  return level;
}

std::list<long> Plain_wood::on_cycles() const {
  std::list<long> found;
  for (long start = 0; start < size(); ++start) {
    std::set<long> reached;
    const std::function<void(long)> walk = [&](long index) {
      if (!deps[index]) return;
      for (long dep : *deps[index]) {
        if (reached.insert(dep).second) walk(dep);
      }
    };
    walk(start);
    if (reached.count(start) != 0) found.push_back(start);
  }
  return found;
}

long Plain_wood::down_path(long index, long own) const {
  long heaviest = 0;
  for (long reader : readers[index]) {
    if (deps[reader]) heaviest = std::max(heaviest, down_path(reader, weight[reader]));
  }
  return own + heaviest;
}

long Plain_wood::up_path(long index, long own) const {
  if (!deps[index]) return own;
  long heaviest = weight[index];
  for (long dep : *deps[index]) {
    if (deps[dep]) heaviest = std::max(heaviest, up_path(dep, weight[index]));
  }
  return own + heaviest;
}

Plain_wood random_wood(std::mt19937& random, const Shape& shape) {
  const auto below = [&random](long end) {
    return std::uniform_int_distribution<long>(0, end - 1)(random);
  };
  const long nb_vars = 1 + below(shape.most_variables);
  Plain_wood wood(nb_vars);
  // An acyclic wood reads only what comes before in an order that is not that of the indices.
  std::vector<long> order(nb_vars);
  std::iota(order.begin(), order.end(), 0);
  std::shuffle(order.begin(), order.end(), random);
  const long most_reads = 1 + below(4);
  for (long place = 0; place < nb_vars; ++place) {
    if (below(4) == 0) continue;
    std::set<long> reads;
    const long candidates = shape.acyclic ? place : nb_vars;
    for (long n = below(most_reads + 1); n > 0 && candidates > 0; --n) {
      reads.insert(order[below(candidates)]);
    }
    wood.equation(order[place], reads);
  }
  for (long n = shape.extra_readers ? below(3) : 0; n > 0; --n) {
    const long reader = below(nb_vars);
    wood.readers[order[shape.acyclic ? below(reader + 1) : below(nb_vars)]].insert(order[reader]);
  }
  if (shape.acyclic) {
    for (long index = 0; index < nb_vars; ++index) wood.readers[index].erase(index);
  }
  for (long index = 0; index < nb_vars; ++index) {
    wood.weight.push_back(1 + below(5));
    if (wood.deps[index]) wood.early[index] = random_date(random, nb_vars, shape);
    wood.late[index] = random_date(random, nb_vars, shape);
  }
  return wood;
}

void fill(Bddexpressionwood& wood, const Plain_wood& plain) {
  for (long index = 0; index < plain.size(); ++index) wood.New_var_last(numbered("v", index));
  for (long index = 0; index < plain.size(); ++index) {
    if (plain.deps[index]) {
      auto* e = new Bddexpression(index, &wood, index_set(*plain.deps[index]), "data",
                                  plain.early[index], 0);
      e->setW(plain.weight.empty() ? 1 : plain.weight[index]);
    }
    for (long reader : plain.readers[index]) wood.add_amont_dependance(index, reader);
    wood.setLateDate(wood.Bdd_var_by_index(index), plain.late[index]);
  }
  wood.update_nb_level(plain.level);
}

}  // namespace kiva::test

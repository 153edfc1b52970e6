#include "tests/zu_compile/program.h"

namespace kiva::test {

bool Condition::holds(const std::set<std::string>& present) const {
  switch (kind) {
    case Kind::signal:
      return present.contains(signal);
    case Kind::negation:
      return !parts[0].holds(present);
    case Kind::both:
      return parts[0].holds(present) && parts[1].holds(present);
    case Kind::either:
      return parts[0].holds(present) || parts[1].holds(present);
    case Kind::always:
      return true;
    case Kind::never:
      return false;
  }
  return false;
}

std::string Condition::text() const {
  switch (kind) {
    case Kind::signal:
      return signal;
    case Kind::negation:
      return "not " + parts[0].text();
    case Kind::both:
      return "(" + parts[0].text() + " and " + parts[1].text() + ")";
    case Kind::either:
      return "(" + parts[0].text() + " or " + parts[1].text() + ")";
    case Kind::always:
      return "TT";
    case Kind::never:
      return "FF";
  }
  return "";
}

std::string Program::text() const {
  const auto block = [](const Program& part) { return "{ " + part.text() + " }"; };
  const auto joined = [&](const char* operation) {
    std::string all;
    for (const Program& part : parts) all += (all.empty() ? "" : operation) + block(part);
    return all;
  };
  switch (kind) {
    case Kind::nothing:
      return "nothing";
    case Kind::halt:
      return "halt";
    case Kind::pause:
      return "pause";
    case Kind::emit:
      return "emit " + signal;
    case Kind::sustain:
      return "sustain " + signal + " until " + condition.text();
    case Kind::wait:
      return "wait " + (count == 1 ? "" : std::to_string(count) + " ") + condition.text();
    case Kind::loop:
      return "loop " + block(parts[0]);
    case Kind::sequence:
      return joined(" >> ");
    case Kind::parallel:
      return joined(" || ");
    case Kind::present:
      return "present " + condition.text() + " " + block(parts[0]) +
             (parts.size() > 1 ? " else " + block(parts[1]) : "");
    case Kind::weak_abort:
      return "weak abort " + block(parts[0]) + " when " + condition.text();
    case Kind::strong_abort:
      return "strong abort " + block(parts[0]) + " when " + condition.text();
    case Kind::repeat:
      return "repeat " + std::to_string(count) + " " + block(parts[0]);
  }
  return "";
}

int Program::size() const {
  int all = 1 + static_cast<int>(condition.parts.size());
  for (const Program& part : parts) all += part.size();
  return all + count - 1;
}

std::vector<Program> Program::smaller() const {
  std::vector<Program> found = parts;
  if (!parts.empty()) found.emplace_back();  // nothing
  const auto add = [&](auto change) {
    Program copy = *this;
    change(copy);
    found.push_back(std::move(copy));
  };
  const size_t least = kind == Kind::sequence || kind == Kind::parallel ? 2
                       : kind == Kind::present                          ? 1
                                                                        : parts.size();
  for (size_t i = 0; i < parts.size(); ++i) {
    if (parts.size() > least) add([i](Program& copy) { copy.parts.erase(copy.parts.begin() + i); });
    for (Program& part : parts[i].smaller())
      add([&](Program& copy) { copy.parts[i] = std::move(part); });
  }
  if (count > 1) add([](Program& copy) { --copy.count; });
  for (const Condition& part : condition.parts) add([&](Program& copy) { copy.condition = part; });
  return found;
}

std::string module_text(const Program& body) {
  const auto list = [](const char* section, const std::vector<std::string>& names) {
    std::string text = section;
    for (const std::string& name : names) text += (name == names[0] ? " " : ", ") + name;
    return text + ";\n";
  };
  return "module main:\n" + list("Input:", input_names) + list("Output:", output_names) +
         list("Local:", local_names) + body.text() + "\nend\n";
}

namespace {

int pick(std::mt19937& random, int below) {
  return static_cast<int>(random() % static_cast<unsigned>(below));
}

const std::string& pick(std::mt19937& random, const std::vector<std::string>& names) {
  return names[pick(random, static_cast<int>(names.size()))];
}

const std::string& written_signal(std::mt19937& random) {
  return pick(random, pick(random, 4) == 0 ? local_names : output_names);
}

Condition random_condition(std::mt19937& random, int depth) {
  using Kind = Condition::Kind;
  const int choice = pick(random, 20);
  if (depth > 0 && choice < 6) {
    const Kind kind = choice < 2 ? Kind::negation : choice < 4 ? Kind::both : Kind::either;
    Condition made{kind, "", {random_condition(random, depth - 1)}};
    if (kind != Kind::negation) made.parts.push_back(random_condition(random, depth - 1));
    return made;
  }
  if (choice == 19) return {Kind::always, "", {}};
  if (choice == 18) return {Kind::never, "", {}};
  if (choice > 14) return {Kind::signal, written_signal(random), {}};
  return {Kind::signal, pick(random, input_names), {}};
}

}  // namespace

Program random_program(std::mt19937& random, int size) {
  using Kind = Program::Kind;
  Program made;
  if (size >= 6 && pick(random, 10) == 0) {
    // A body that is killed and started again in one instant needs the right company to show.
    Program abort, skip, body;
    abort.kind = pick(random, 2) == 0 ? Kind::weak_abort : Kind::strong_abort;
    skip.kind = Kind::present;
    abort.condition = random_condition(random, 1);
    skip.condition = random_condition(random, 1);
    skip.parts.push_back(random_program(random, 1 + pick(random, 2)));
    abort.parts.push_back(random_program(random, size - 3));
    body.kind = Kind::sequence;
    body.parts = {abort, skip};
    made.kind = Kind::loop;
    made.parts.push_back(body);
    return made;
  }
  if (size <= 1) {
    const int choice = pick(random, 12);
    made.kind = choice < 4    ? Kind::emit
                : choice < 7  ? Kind::pause
                : choice < 9  ? Kind::wait
                : choice < 10 ? Kind::sustain
                : choice < 11 ? Kind::halt
                              : Kind::nothing;
    made.signal = written_signal(random);
    if (made.kind == Kind::wait || made.kind == Kind::sustain)
      made.condition = random_condition(random, 1);
    if (made.kind == Kind::wait && pick(random, 3) == 0) made.count = 2 + pick(random, 2);
    return made;
  }
  const int choice = pick(random, 20);
  made.kind = choice < 7    ? Kind::sequence
              : choice < 10 ? Kind::parallel
              : choice < 13 ? Kind::loop
              : choice < 15 ? Kind::present
              : choice < 17 ? Kind::weak_abort
              : choice < 19 ? Kind::strong_abort
                            : Kind::repeat;
  int members = 1;
  if (made.kind == Kind::sequence || made.kind == Kind::parallel)
    members = 2 + pick(random, std::min(3, size - 1));
  if (made.kind == Kind::present) members = 1 + pick(random, 2);
  if (made.kind == Kind::repeat) made.count = 1 + pick(random, 3);
  if (made.kind == Kind::present || made.kind == Kind::weak_abort ||
      made.kind == Kind::strong_abort)
    made.condition = random_condition(random, 1);
  int left = size - 1;
  for (int i = 0; i < members; ++i) {
    const int share = i + 1 == members ? left : 1 + pick(random, std::max(1, left / 2));
    made.parts.push_back(random_program(random, share));
    left = std::max(1, left - share);
  }
  return made;
}

}  // namespace kiva::test

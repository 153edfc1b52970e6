// A random program, compiled and run, against the interpreter that knows statements by their
// meaning alone. The text is the seed: its kind, its size and what it draws.

#include "tests/fuzz/fuzz.h"
#include "tests/zu_compile/judge.h"

KIVA_FUZZ(text) {
  using namespace kiva;
  Session session;
  std::seed_seq seed(text.begin(), text.end());
  std::mt19937 random(seed);
  const int kind = text.empty() ? 0 : static_cast<unsigned char>(text[0]) % 4;
  const int size = 2 + (text.size() < 2 ? 0 : static_cast<unsigned char>(text[1]) % 24);
  const Session::Use use(session);
  test::Program program = kind == 0   ? test::random_automaton(random, size)
                          : kind == 1 ? test::random_mealy(random, 1 + size / 4)
                                      : test::random_program(random, size);
  test::enrich(program, random);
  std::vector<test::History> runs;
  for (int i = 0; i < 3; ++i) runs.push_back(test::random_history(random));
  std::string difference;
  if (test::compare(program, runs, difference) == test::Verdict::differs)
    fuzz::found(difference + '\n' + test::module_text(program));
}

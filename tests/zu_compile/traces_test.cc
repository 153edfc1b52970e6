// Programs as instants, with traces derived by hand. '1' is One; a silent output that something may
// write is Bottom, '_', one that nothing writes is Zero.

#include <gtest/gtest.h>

#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

struct Case {
  const char* body;
  const char* signal;
  const char* stimuli;
  const char* states;
};

std::string in_module(const std::string& body) {
  return "module main: Input: x, y; Output: o, p; Local: L; " + body + " end";
}

void check(const std::vector<Case>& cases, const Rules& rules = Rules::sound()) {
  for (const Case& c : cases)
    EXPECT_EQ(trace(in_module(c.body), c.signal, c.stimuli, rules), c.states)
        << c.signal << " of " << c.body;
}

TEST(Traces, TimeAndSequence) {
  check({
      {"pause >> emit o", "o", ". . .", "_1_"},
      {"emit o >> emit p", "p", ". .", "1_"},
      {"emit o", "p", ". .", "00"},
      {"nothing", "RTL", ". .", "10"},
      {"halt", "RTL", ". . .", "000"},
      // A wait does not look at its signal in the instant in which it starts.
      {"wait x >> emit o", "o", "x x . .", "_1__"},
      {"wait 3 x >> emit o", "o", "x x . x x x", "____1_"},
      {"repeat 2 { emit o >> pause }", "o", ". . . .", "11__"},
      {"repeat 2 { emit o >> pause }", "RTL", ". . . .", "0010"},
      {"present x emit o else emit p", "o", "x .", "1_"},
      {"present x emit o else emit p", "p", ". x", "1_"},
      {"present x emit o", "RTL", ". .", "10"},
  });
}

TEST(Traces, Sustain) {
  check({
      {"sustain o until x >> emit p", "o", ". . x .", "11__"},
      {"sustain o until x >> emit p", "p", ". . x .", "__1_"},
      // Unlike a wait it looks at once.
      {"sustain o until x >> emit p", "o", "x .", "__"},
      {"sustain o until x >> emit p", "p", "x .", "1_"},
      {"sustain o until FF || wait x >> sustain o until y", "o", ". x . y .", "11111"},
  });
}

TEST(Traces, ParallelEndsWithItsLastMember) {
  check({
      {"{ wait x || wait y } >> emit o", "o", ". x . . y .", "____1_"},
      {"{ wait x || wait y } >> emit o", "o", ". x+y .", "_1_"},
      {"{ nothing || pause || pause >> pause } >> emit o", "o", ". . . .", "__1_"},
      {"emit o || pause >> emit o", "o", ". . .", "11_"},
      {"{ halt || pause } >> emit o", "o", ". . .", "___"},
      // An end that waits for the others does not outlive them.
      {"loop { { wait x || wait y } >> emit o }", "o", ". x y x . y", "__1__1"},
  });
}

TEST(Traces, WeakAbort) {
  check({
      // The body still runs in the instant in which it is stopped.
      {"weak abort { sustain o until FF } when x >> emit p", "o", ". . x .", "111_"},
      {"weak abort { sustain o until FF } when x >> emit p", "p", ". . x .", "__1_"},
      // The condition is not looked at in the first.
      {"weak abort { halt } when x >> emit p", "p", "x . x .", "__1_"},
      {"weak abort { pause >> emit o } when x >> emit p", "p", ". . x", "_1_"},
      // Body and condition end it in one instant: it ends once.
      {"weak abort { pause >> emit o } when x >> emit p", "o", ". x .", "_1_"},
      {"weak abort { pause >> emit o } when x >> emit p", "p", ". x .", "_1_"},
  });
}

TEST(Traces, StrongAbort) {
  check({
      {"strong abort { sustain o until FF } when x >> emit p", "o", ". . x .", "11__"},
      {"strong abort { sustain o until FF } when x >> emit p", "p", ". . x .", "__1_"},
      {"strong abort { emit o >> halt } when x", "o", "x .", "1_"},
      // What stands beside is left alone.
      {"sustain o until FF || strong abort { sustain o until FF } when x", "o", ". x .", "111"},
      {"strong abort { pause >> emit o >> pause >> emit o } when L || wait x >> emit L", "o",
       ". . x .", "_1__"},
  });
}

TEST(Traces, NestedAborts) {
  const char* strong_outside =
      "strong abort { weak abort { sustain o until FF } when x >> sustain p until FF } when y";
  const char* weak_outside =
      "weak abort { strong abort { sustain o until FF } when x >> sustain p until FF } when y";
  check({
      {strong_outside, "o", ". x .", "11_"},
      {strong_outside, "p", ". x .", "_11"},
      {strong_outside, "o", ". y .", "1__"},
      {strong_outside, "o", ". x+y .", "1__"},
      {strong_outside, "p", ". x+y .", "___"},
      {weak_outside, "o", ". y .", "11_"},
      {weak_outside, "o", ". x+y .", "1__"},
      // Stopped inside and outside at once: what follows inside has its one instant.
      {weak_outside, "p", ". x+y .", "_1_"},
  });
}

TEST(Traces, LoopsRestartWhereTheyEnd) {
  check({
      {"loop { emit o >> pause }", "o", ". . .", "111"},
      {"loop { emit o >> pause >> pause }", "o", ". . . . .", "1_1_1"},
      {"loop { pause >> present x emit o }", "o", "x x . x", "_1_1"},
      // Killed and started in one instant, again and again.
      {"loop { weak abort { emit o >> pause >> halt } when x }", "o", ". x x . x", "111_1"},
      {"loop { strong abort { emit o >> pause >> emit p >> halt } when x }", "o", ". x . . x",
       "11__1"},
      {"loop { strong abort { emit o >> pause >> emit p >> halt } when x }", "p", ". x . . x",
       "__1__"},
      // A sustain that ends at once sends the loop round while its abort is being left.
      {"loop { strong abort { pause } when x >> sustain o until y }", "o", ". x+y . .", "__11"},
      {"weak abort { loop { weak abort { pause >> emit o >> halt } when y } } when x", "o",
       ". . y . y x .", "_1_1_1_"},
  });
}

TEST(Traces, LocalsInLoops) {
  check({
      {"loop { emit L >> present L emit o >> pause } ", "o", ". .", "11"},
      {"loop { present L emit o >> pause } || loop { wait x >> emit L }", "o", ". x . x+y", "_1_1"},
  });
}

TEST(Traces, NoEmitBesideEmit) {
  check({
      {"noemit o", "o", ". .", "0_"},
      {"noemit o || emit o", "o", ". .", "T_"},
      // Zero shows only where no other occurrence is there to say something else.
      {"pause >> noemit o || pause >> pause >> emit o", "o", ". . . .", "__1_"},
  });
}

TEST(Traces, SetAndReset) {
  check({
      // A reset lets the instant run, and nothing after it.
      {"loop { emit o >> pause }", "o", ". . !reset . . !set .", "111__11"},
      {"{ wait x || wait y } >> emit o", "o", ". x !reset . !set y x", "______1"},
      {"pause >> emit o", "o", "!reset . .", "___"},
  });
}

TEST(Traces, ClassicRules) {
  check(
      {
          {"weak abort { emit o } when x >> emit p", "p", "x . .", "___"},
          {"sustain o until x", "o", ". . x .", "1100"},
          {"loop { strong abort { pause } when x >> sustain o until y }", "o", ". x+y . .", "0000"},
      },
      Rules::classic());
}

}  // namespace
}  // namespace kiva::test

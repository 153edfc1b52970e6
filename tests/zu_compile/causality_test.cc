// Programs whose equations depend on each other in one instant: by hand here, at random beside the
// interpreter in meaning_test.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/zu_compile/compiled.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;

struct Case {
  const char* body;
  const char* stimuli;
  const char* signal;
  const char* trace;
};

TEST(Causality, WhatSettlesRuns) {
  const Case cases[] = {
      {"loop { { emit o || wait a } >> emit p }", ". a . a", "o", "11_1"},
      {"loop { { emit o || wait a } >> emit p }", ". a . a", "p", "_1_1"},
      {"loop { pause || emit o }", ". . .", "o", "111"},
      {"loop { { present b emit o || wait a } }", "b a+b b a", "o", "11__"},
      {"loop { { sustain o until c || pause } >> emit p }", ". . c . c", "p", "__111"},
      {"loop { nothing || pause } || loop { emit o >> pause }", ". . .", "o", "111"},
      {"loop { present a { wait b >> emit o } >> present not a { wait c >> emit p } }",
       ". c a+c b+a . b", "o", "___1_1"},
      // Each follows from the other, in different instants.
      {"loop { present o { emit p } >> pause >> pause } || pause >> loop { present p { emit o } >> "
       "pause >> pause } || loop { wait a >> emit o }",
       ". a a", "p", "__1"},
      {"loop { weak abort { emit L >> halt } when a }", ". a a .", "L", "111_"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(trace(std::string("module main: Input: a, b, c; Output: o, p; Local: L, M; ") +
                        c.body + " end",
                    c.signal, c.stimuli, Rules::sound()),
              c.trace)
        << c.body;
}

TEST(Causality, WhatJustifiesItselfOrNeverEndsIsRefused) {
  for (const char* body :
       {"present o { emit o }", "present not o { emit o }", "wait a >> present o { emit o }",
        "loop { present a { pause } }", "present a { loop { emit o } } else { halt }",
        "strong abort { wait a >> emit L >> emit o >> halt } when L"}) {
    const Compiled c(std::string("module main: Input: a; Output: o; Local: L; ") + body + " end");
    EXPECT_THAT(c.report(), HasSubstr("dependance cycle")) << body;
  }
}

}  // namespace
}  // namespace kiva::test

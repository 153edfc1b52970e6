// The library's texts by default, to the letter: each file of the folder told was read by eye.

#include <gtest/gtest.h>

#include <sstream>

#include "tarn/formats/target_rules.h"
#include "tarn/model/compilation.h"
#include "tests/formats/target_case.h"

namespace kiva::test {
namespace {

/// Calls check(module, file name without extension) for a finalised module, one that is not, and
/// one with values.
void for_each_told(const std::function<void(Module*, const std::string&)>& check) {
  for (const std::string name : {"toggle", "open", "thermostat"}) {
    const TargetCase test = named_case(name + ".zuc");
    check(test.module(), name);
  }
}

TEST(Told, C) {
  for_each_told([](Module* module, const std::string& name) {
    std::ostringstream body, header;
    module->C_put(body, header);
    expect_told(name + ".c", body.str());
    expect_told(name + ".h", header.str());
  });
}

TEST(Told, Blif) {
  for_each_told([](Module* module, const std::string& name) {
    std::ostringstream out;
    module->BLIF_put(out, 0);
    expect_told(name + ".blif", out.str());
  });
}

}  // namespace
}  // namespace kiva::test

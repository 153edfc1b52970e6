#include "tarn/zu/nested_modules.h"

#include <algorithm>
#include <cstdlib>

#include "tarn/model/module.h"
#include "tarn/model/sexception.h"

namespace kiva {

namespace {

/// Bytes of stack that a chain may take before its last module begins: each of its bodies can be
/// nested as deeply as a file allows.
constexpr std::uintptr_t most_stack = 2 << 20;

std::string names_of(const NestedModule::Chain& chain, const Module* again) {
  constexpr size_t most = 20;
  std::string names;
  auto at = std::find(chain.begin(), chain.end(), again);
  for (size_t shown = 0; at != chain.end() && shown < most; ++at, ++shown)
    names += (*at)->getName() + " > ";
  return (at == chain.end() ? names : names + "... > ") + again->getName();
}

}  // namespace

NestedModule::Chains& NestedModule::chains() {
  return Session::current().part<Chains>();
}

NestedModule::NestedModule(Chain& chain, const Module* module) : chain_(chain) {
  const auto frame = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  Chains& open = chains();
  if (open.alive == 0) open.outermost_frame = frame;
  if (std::find(chain.begin(), chain.end(), module) != chain.end())
    throw explained(IllegalOperationException("Run: module runs itself: ", names_of(chain, module)),
                    "module \"" + module->getName() + "\" runs itself: " + names_of(chain, module));
  if (std::max(frame, open.outermost_frame) - std::min(frame, open.outermost_frame) > most_stack)
    throw explained(
        IllegalOperationException("Run: modules that run each other are nested too deeply: ",
                                  module->getName()),
        "modules that run each other are nested too deeply here");
  chain.push_back(module);
  ++open.alive;
}

NestedModule::~NestedModule() {
  chain_.pop_back();
  --chains().alive;
}

}  // namespace kiva

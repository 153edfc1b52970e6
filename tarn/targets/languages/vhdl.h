#pragma once

#include <string>

#include "tarn/targets/frame/target.h"
#include "tarn/targets/frame/target_text.h"

namespace kiva {

extern const TargetText::Language vhdl_language;

/// The told text, with elements of `type`.
void put_told_vhdl(const TargetJob& job, const std::string& type);

}  // namespace kiva

#pragma once

#include "programs/campaign/options.h"

namespace kiva::campaign {

/// Makes the campaign, or adds results up, and writes what comes of it; gives the exit status.
int run(const Options& options);

}  // namespace kiva::campaign

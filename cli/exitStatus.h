// What the tool's exit status says. The worst of all files counts.
#pragma once

#include <algorithm>

namespace cli {

enum ExitStatus : int {
  allGood = 0,
  badDocument = 1,
  different = 1, // two documents that were compared
  unusable = 2   // wrong usage, or a file that cannot be read or written
};

inline void worsen(ExitStatus &status, ExitStatus other) { status = std::max(status, other); }

} // namespace cli

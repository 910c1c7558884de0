// Every document of the library as a thing that can be run on a context: reads its body, checks it, writes it again.
#pragma once

#include "rtxTypes.h"

#include <span>
#include <string>

namespace library {

struct Outcome {
  int decoded = 0;
  int validated = 0;
  int encoded = 0;
  std::string output;

  bool operator==(const Outcome &) const = default;
};

struct Driver {
  const char *name;
  // Leaves nothing on the heap that a release function is there for.
  Outcome (*run)(RuntimeContext *ctx);
};

std::span<const Driver> imsDrivers();
std::span<const Driver> debugDrivers();

} // namespace library
